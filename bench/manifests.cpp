#include "manifests.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <random>

namespace bench {
namespace {

class Files {
 public:
  Files() : folder(std::filesystem::temp_directory_path() / ("qzjexxml-bench-" + std::to_string(getpid()))) {
    std::filesystem::create_directory(folder);
  }
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  ~Files() {
    if (getpid() == owner) {  // not in a process that was forked to be measured
      std::filesystem::remove_all(folder);
    }
  }

  template <typename Write>
  const std::string& get(const std::string& name, Write write) {
    std::string& path = paths[name];
    if (path.empty()) {
      path = folder / name;
      std::ofstream stream(path, std::ios::binary);
      write(stream);
    }
    return path;
  }

 private:
  std::filesystem::path folder;
  std::map<std::string, std::string> paths;
  pid_t owner = getpid();
};

Files files;

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

}  // namespace

const std::string& manifestFile(Shape shape, int entries) {
  const std::string name = (shape == Shape::sorted ? "sorted-" : "unsorted-") + std::to_string(entries);
  return files.get(name, [=](std::ostream& stream) { writeManifest(stream, shape, entries); });
}

const std::string& largeFile() {
  return files.get("large.xml", [](std::ostream& stream) {
    const std::string mebibyte(1 << 20, 'x');
    for (int i = 0; i < 64; ++i) {
      stream << mebibyte;
    }
  });
}

}  // namespace bench
