// JsonWriter: JSON on the standard output, piece by piece, since it may be large.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tool {

// What is not UTF-8 in a text becomes U+FFFD.
class JsonWriter {
 public:
  JsonWriter& beginObject() { return begin('{', '}'); }
  JsonWriter& beginArray() { return begin('[', ']'); }
  JsonWriter& end();
  JsonWriter& key(std::string_view name);
  JsonWriter& text(std::string_view value);
  JsonWriter& number(std::uint64_t value);

  // Starts a line with the object of a file: "file", and for a name that is not UTF-8 also "fileBytes", the name with
  // its bytes above 0x7F, and %, as %E9.
  JsonWriter& beginFile(const std::string& name);
  void endFile();

 private:
  JsonWriter& begin(char opening, char closing);
  void separate();

  std::string open;  // what ends the objects and arrays that are open
  bool isFirst = true;
};

}  // namespace tool
