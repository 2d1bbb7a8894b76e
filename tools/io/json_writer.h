// JsonWriter: JSON on the standard output, piece by piece, since it may be large.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// Writes the object of a file, on a line. What is not UTF-8 in a text becomes U+FFFD.
class JsonWriter {
 public:
  // Starts with "file", the name. A name that is not UTF-8 is there as "fileBytes" too, with its bytes above 0x7F and
  // each % as %E9.
  explicit JsonWriter(const std::string& file);
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;
  ~JsonWriter();

  JsonWriter& beginObject() { return begin('{', '}'); }
  JsonWriter& beginArray() { return begin('[', ']'); }
  JsonWriter& end();
  JsonWriter& key(std::string_view name);
  JsonWriter& text(std::string_view value);
  JsonWriter& number(std::uint64_t value) { return write(std::to_string(value)); }

 private:
  JsonWriter& begin(char opening, char closing);
  JsonWriter& write(std::string_view piece);

  std::string open;  // what ends the objects and arrays that are open
  bool isFirst = true;
};

}  // namespace tool
