#include "io/descriptor.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace tool {

Descriptor::~Descriptor() {
  if (number > STDERR_FILENO) {
    close(number);
  }
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

}  // namespace tool
