#include "io/quoting.h"

namespace tool {

std::string inQuotes(std::string_view name) {
  std::size_t length = 100;
  if (name.size() <= length) {
    return '"' + std::string(name) + '"';
  }
  while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80) {
    --length;
  }
  return '"' + std::string(name.substr(0, length)) + "...\"";
}

}  // namespace tool
