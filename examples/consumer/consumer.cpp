// Loads an archive manifest and prints its record: the whole of what a program does with the library.
#include <qzjexxml/qzjexxml.h>

#include <iostream>

int main(int argc, char* argv[]) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " MANIFEST" << std::endl;
    return 2;
  }
  KIVData* manifest = nullptr;
  InitKIVData(argv[1], &manifest);

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
