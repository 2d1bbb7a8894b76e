// File descriptors: closing them, and writing all of a text to one.
#pragma once

#include <string_view>

namespace tool {

// Closes the descriptor at its end, unless it is that of a standard stream or negative.
class Descriptor {
 public:
  explicit Descriptor(int opened = -1) : number(opened) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  int get() const { return number; }

 private:
  int number;
};

// Continues after a short write or a signal. False with errno set.
bool writeAll(int descriptor, std::string_view bytes);

}  // namespace tool
