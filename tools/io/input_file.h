// Files that commands read.
#pragma once

#include "io/descriptor.h"

#include <string>

namespace tool {

// Throws Failure for a file that is missing, empty, not the user's to read, too large, or neither a regular file nor a
// FIFO. Opens nothing. The standard input ("-") is looked at when it is read.
void requireReadable(const std::string& file);

// A file that the library can open by its path. The standard input ("-") and FIFOs are copied into memory first.
class InputFile {
 public:
  // Throws Failure, as requireReadable.
  explicit InputFile(const std::string& name);

  // Valid while this object lives.
  const char* path() const { return openable.c_str(); }

 private:
  void copy(int input);

  std::string openable;
  bool isCopied;
  Descriptor memory;
};

}  // namespace tool
