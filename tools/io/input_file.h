// InputFile: a file that a command reads.
#pragma once

#include "io/descriptor.h"

#include <string>

namespace tool {

// Throws Failure for a file that is missing, unreadable, empty, too large, or neither a regular file nor a FIFO.
// Accepts "-", the standard input. Does not open the file.
void requireReadable(const std::string& file);

// Gives the library a path. Copies the standard input and FIFOs into memory first. Throws as requireReadable() does.
class InputFile {
 public:
  explicit InputFile(const std::string& name);

  // Valid while this object lives.
  const char* path() const { return openable.c_str(); }

 private:
  std::string openable;
  bool isCopied;
  Descriptor memory;
};

}  // namespace tool
