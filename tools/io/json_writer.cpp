#include "io/json_writer.h"

#include <nlohmann/json.hpp>
#include <utf8.h>

#include <iostream>
#include <utility>

namespace tool {

JsonWriter::JsonWriter(const std::string& file) {
  beginObject().key("file").text(file);
  if (!utf8::is_valid(file.begin(), file.end())) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string bytes;
    for (const char letter : file) {
      const auto byte = static_cast<unsigned char>(letter);
      bytes +=
          byte < 0x80 && byte != '%' ? std::string{letter} : std::string{'%', digits[byte >> 4U], digits[byte & 15U]};
    }
    key("fileBytes").text(bytes);
  }
}

JsonWriter::~JsonWriter() {
  end();
  std::cout << '\n';
}

JsonWriter& JsonWriter::write(std::string_view piece) {
  std::cout << (std::exchange(isFirst, false) ? "" : ",") << piece;
  return *this;
}

JsonWriter& JsonWriter::begin(char opening, char closing) {
  write({&opening, 1});
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
  return write(nlohmann::json(value).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace tool
