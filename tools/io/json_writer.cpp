#include "io/json_writer.h"

#include <nlohmann/json.hpp>
#include <utf8.h>

#include <iostream>
#include <utility>

namespace tool {

void JsonWriter::separate() {
  if (!std::exchange(isFirst, false)) {
    std::cout << ',';
  }
}

JsonWriter& JsonWriter::begin(char opening, char closing) {
  separate();
  std::cout << opening;
  open += closing;
  isFirst = true;
  return *this;
}

JsonWriter& JsonWriter::end() {
  std::cout << open.back();
  open.pop_back();
  isFirst = false;
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  text(name);
  std::cout << ':';
  isFirst = true;
  return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) {
  separate();
  std::cout << nlohmann::json(value).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return *this;
}

JsonWriter& JsonWriter::number(std::uint64_t value) {
  separate();
  std::cout << value;
  return *this;
}

JsonWriter& JsonWriter::beginFile(const std::string& name) {
  beginObject().key("file").text(name);
  if (!utf8::is_valid(name.begin(), name.end())) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string bytes;
    for (const char letter : name) {
      const auto byte = static_cast<unsigned char>(letter);
      bytes +=
          byte < 0x80 && byte != '%' ? std::string{letter} : std::string{'%', digits[byte >> 4U], digits[byte & 15U]};
    }
    key("fileBytes").text(bytes);
  }
  return *this;
}

void JsonWriter::endFile() {
  end();
  std::cout << '\n';
  isFirst = true;
}

}  // namespace tool
