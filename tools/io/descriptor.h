// File descriptors: closing and writing.
#pragma once

#include <string_view>

namespace tool {

// Closes the descriptor, unless it is negative or that of a standard stream.
class Descriptor {
 public:
  explicit Descriptor(int opened = -1) : number(opened) {}
  Descriptor(const Descriptor&) = delete;
  ~Descriptor();

  int get() const { return number; }

 private:
  const int number;
};

// Writes all bytes, also after short writes and signals. Returns false with errno set.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace tool
