// InputFile: a file that a command reads.
#pragma once

#include "io/descriptor.h"

#include <string>

namespace tool {

// Throws Failure for a file that is missing, unreadable, empty, too large, or neither a regular file nor a FIFO. Does
// not open the file. Accepts "-", the standard input.
void requireReadable(const std::string& file);

// Gives the library a path. Copies the standard input and FIFOs into memory first.
class InputFile {
 public:
  // Throws Failure as requireReadable() does.
  explicit InputFile(const std::string& name);

  // Valid while this object lives.
  const char* path() const { return openable.c_str(); }

 private:
  std::string openable;
  bool isCopied;
  Descriptor memory;
};

}  // namespace tool
