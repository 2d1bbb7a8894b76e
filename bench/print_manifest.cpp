// Prints a manifest of 100,000 entries to run a profiler on. Argument: "sorted" or "unsorted".
#include "manifests.h"

#include <iostream>
#include <string_view>

int main(int argc, char* argv[]) {
  using bench::Shape;
  const bool sorted = argc == 2 && argv[1] == std::string_view("sorted");
  if (!sorted && (argc != 2 || argv[1] != std::string_view("unsorted"))) {
    std::cerr << "usage: " << argv[0] << " sorted|unsorted" << std::endl;
    return 2;
  }
  bench::writeManifest(std::cout, sorted ? Shape::sorted : Shape::unsorted, 100'000);
  return std::cout.flush() ? 0 : 1;
}
