#include "manifests.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace bench {
namespace {

// A directory for the files; removed when the program ends.
struct Directory {
  Directory() { std::filesystem::create_directory(path); }
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;
  ~Directory() { std::filesystem::remove_all(path); }

  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("qzjexxml-bench-" + std::to_string(getpid()));
};

const Directory directory;

}  // namespace

void writeManifest(std::ostream& stream, Shape shape, int entries) {
  std::minstd_rand random(1);
  stream << "<doc_root type=\"archive\"><kiv application=\"bench\"><filemap>\n";
  int left = entries;
  for (int root = 0; left > 0; ++root) {
    int count = shape == Shape::sorted ? 1000 : static_cast<int>(random() % 400) + 1;
    count = std::min(count, left);
    stream << "<root path=\"/r" << 1000 + root << "\">\n";
    for (int i = 0; i < count; ++i, --left) {
      if (shape == Shape::sorted) {
        stream << "<data dir_name=\"d\" file_name=\"f" << 1000 + i << "\"/>\n";
      } else {
        stream << "<data dir_name=\"directory/" << random() << "\" file_name=\"file_" << random()
               << ".extension\" file_rename=\"" << random() % 1000 << "\"/>\n";
      }
    }
    stream << "</root>\n";
  }
  stream << "</filemap></kiv></doc_root>\n";
}

std::string manifestFile(Shape shape, int entries) {
  std::string path = directory.path / ((shape == Shape::sorted ? "sorted-" : "unsorted-") + std::to_string(entries));
  std::ofstream stream(path, std::ios::binary);
  writeManifest(stream, shape, entries);
  return path;
}

std::string manifestDirectory(int files, int entries) {
  const std::filesystem::path path = directory.path / "small";
  std::filesystem::create_directory(path);
  for (int i = 0; i < files; ++i) {
    std::ofstream stream(path / (std::to_string(i) + ".xml"), std::ios::binary);
    writeManifest(stream, Shape::unsorted, entries);
  }
  return path;
}

std::string largeFile() {
  std::string path = directory.path / "large.xml";
  std::ofstream stream(path, std::ios::binary);
  const std::string mebibyte(1 << 20, 'x');
  for (int i = 0; i < 64; ++i) {
    stream << mebibyte;
  }
  return path;
}

}  // namespace bench
