// Loads an archive manifest and prints its record: the whole of what a program does with the library.
#include <qzjexxml/qzjexxml.h>

#include <iostream>
#include <new>
#include <sstream>
#include <string>

// Loads `fileName` into `*manifest` and returns what went wrong, which a load only writes to std::cerr; nothing after
// a good load. The buffer of std::cerr is the whole process's: no other thread may write to it meanwhile.
std::string load(const char* fileName, KIVData** manifest) {
  std::ostringstream messages;
  std::streambuf* const buffer = std::cerr.rdbuf(messages.rdbuf());
  try {
    InitKIVData(fileName, manifest);
  } catch (const std::bad_alloc&) {
    messages << "out of memory\n";
  }
  std::cerr.rdbuf(buffer);
  return messages.str();
}

int main(int argc, char* argv[]) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " MANIFEST" << std::endl;
    return 2;
  }
  KIVData* manifest = nullptr;
  const std::string messages = load(argv[1], &manifest);
  if (!messages.empty()) {
    std::cerr << argv[1] << ": " << messages;
    TermKIVData(&manifest);
    return 1;
  }

  std::cout << "root macros\n";
  for (const auto& [name, path] : manifest->rootMacros) {
    std::cout << "  " << name << " = " << path << '\n';
  }
  std::cout << "file map\n";
  for (const auto& [source, entry] : manifest->fileMap) {
    std::cout << "  " << source << " -> " << entry.target << '\n';
  }
  std::cout << "search path\n";
  for (const auto& path : manifest->varnixPath) {
    std::cout << "  " << path << '\n';
  }
  TermKIVData(&manifest);
  return std::cout.flush() ? 0 : 1;
}
