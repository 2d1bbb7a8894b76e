#include "io/terminal_text.h"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace tool {
namespace {

bool isPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char letter) { return letter >= ' ' && letter <= '~'; });
}

// What moves the cursor, begins a line, or turns the direction of writing.
bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x61C || character == 0x200E ||
         character == 0x200F || (character >= 0x202A && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

struct Character {
  char32_t code;
  std::size_t length;  // in bytes
};

// By the locale's code page, or else by UTF-8; a byte of neither is shown as it is.
Character firstOf(std::string_view text) {
  wchar_t character = 0;
  std::mbstate_t state{};
  const std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
  if (length != 0 && length <= text.size()) {
    return {static_cast<char32_t>(character), length};
  }
  const auto first = static_cast<unsigned char>(text[0]);
  const std::size_t utf8Length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  const std::string_view bytes = text.substr(0, utf8Length);
  if (first >= 0x80 && utf8::is_valid(bytes.begin(), bytes.end())) {
    return {utf8::peek_next(bytes.begin(), bytes.end()), bytes.size()};
  }
  return {first < 0x80 ? first : U'?', 1};
}

}  // namespace

std::string shown(std::string_view text) {
  if (isPlain(text)) {
    return std::string(text);
  }
  std::string result;
  while (!text.empty()) {
    const auto [code, length] = firstOf(text);
    if (isControl(code)) {
      std::array<char, 16> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(code));
      result += escape.data();
    } else {
      result += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return result;
}

std::size_t columnsOf(const std::string& text) {
  if (isPlain(text)) {
    return text.size();
  }
  std::wstring wide(text.size(), L'\0');
  const std::size_t length = mbstowcs(wide.data(), text.c_str(), wide.size());
  const int columns = length == static_cast<std::size_t>(-1) ? -1 : wcswidth(wide.c_str(), length);
  if (columns >= 0) {
    return static_cast<std::size_t>(columns);
  }
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;  // not a continuation byte
  }));
}

}  // namespace tool
