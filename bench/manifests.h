// The files that the benchmarks read.
#ifndef QZJEXXML_BENCH_MANIFESTS_H
#define QZJEXXML_BENCH_MANIFESTS_H

#include <iosfwd>
#include <string>

namespace bench {

enum class Shape {
  sorted,   // short names in order, 1,000 files to a root
  unsorted  // long distinct names in no order, 1 to 400 files to a root, about 90 bytes a file
};

void writeManifest(std::ostream& stream, Shape shape, int entries);

// Writes a manifest of so many file-map entries into a temporary folder, which is removed at the end of the
// program, and returns its path.
std::string manifestFile(Shape shape, int entries);

// Likewise a folder of so many unsorted manifests.
std::string manifestFolder(int files, int entries);

// Likewise a file of 64 MiB that is no manifest.
std::string largeFile();

}  // namespace bench

#endif  // QZJEXXML_BENCH_MANIFESTS_H
