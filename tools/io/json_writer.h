// JsonWriter: writes JSON to the standard output in pieces, because an object may be large.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// Writes an object about one file, on one line. Bytes that are not UTF-8 become U+FFFD.
class JsonWriter {
 public:
  // Writes the name as "file". If it is not UTF-8, also writes "fileBytes", with bytes above 0x7F and % as %E9.
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

  std::string open;  // closing brackets of the open objects and arrays
  bool isFirst = true;
};

}  // namespace tool
