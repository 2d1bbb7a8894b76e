// Loads an archive manifest and prints its record.
#include <qzjexxml/manifest.h>

#include <exception>
#include <iostream>

int main(int argc, char* argv[]) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " MANIFEST" << std::endl;
    return 2;
  }
  try {
    const qzjexxml::Manifest manifest = qzjexxml::loadManifest(argv[1]);
    std::cout << "root macros\n";
    for (const auto& [name, path] : manifest.rootMacros()) {
      std::cout << "  " << name << " = " << path << '\n';
    }
    std::cout << "file map\n";
    for (const auto& [source, entry] : manifest.fileMap()) {
      std::cout << "  " << source << " -> " << entry.target << '\n';
    }
    std::cout << "search path\n";
    for (const auto& path : manifest.searchPath()) {
      std::cout << "  " << path << '\n';
    }
  } catch (const std::exception& error) {  // LoadError, or std::bad_alloc
    std::cerr << argv[1] << ": " << error.what() << std::endl;
    return 1;
  }
  return std::cout.flush() ? 0 : 1;
}
