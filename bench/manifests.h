// The files that the benchmarks read.
#pragma once

#include <iosfwd>
#include <string>

namespace bench {

enum class Shape {
  sorted,   // short names in order, 1,000 files to a root
  unsorted  // long distinct names in no order, 1 to 400 files to a root, about 90 bytes a file
};

void writeManifest(std::ostream& stream, Shape shape, int entries);

// Writes a manifest with that many file-map entries into a temporary directory and returns its path. The directory is
// removed when the program ends.
std::string manifestFile(Shape shape, int entries);

// Does the same for a directory of that many unsorted manifests.
std::string manifestDirectory(int files, int entries);

// Does the same for a file of 64 MiB that is not a manifest.
std::string largeFile();

}  // namespace bench
