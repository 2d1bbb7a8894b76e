// A file in memory, for functions that take the name of a file.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

class InMemoryFile {
 public:
  InMemoryFile(const std::uint8_t* bytes, std::size_t size) : descriptor(memfd_create("input", 0)) {
    if (write(descriptor, bytes, size) != static_cast<ssize_t>(size)) {
      std::abort();
    }
    std::cerr.rdbuf(nullptr);  // diagnostics are discarded
  }
  InMemoryFile(const InMemoryFile&) = delete;
  InMemoryFile& operator=(const InMemoryFile&) = delete;
  ~InMemoryFile() { close(descriptor); }

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

 private:
  int descriptor;
};
