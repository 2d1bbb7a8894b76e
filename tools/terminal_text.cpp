#include "terminal_text.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace tool {
namespace {

bool isControl(wint_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace

std::string shown(std::string_view text) {
  if (std::ranges::all_of(text, [](char letter) { return letter >= ' ' && letter <= '~'; })) {
    return std::string(text);
  }
  std::string result;
  while (!text.empty()) {
    wchar_t character = 0;
    std::mbstate_t state{};
    std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
    if (length == 0 || length > text.size()) {  // a NUL, or not of the locale's code page
      length = 1;
      character = static_cast<unsigned char>(text[0]);
      if (character == 0xC2 && text.size() > 1) {  // UTF-8 for U+0080 to U+00BF
        length = 2;
        character = static_cast<unsigned char>(text[1]);
      }
      character = length == 1 && character >= 0x80 ? L' ' : character;
    }
    if (isControl(static_cast<wint_t>(character))) {
      std::array<char, 16> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(character));
      result += escape.data();
    } else {
      result += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return result;
}

std::size_t columnsOf(const std::string& text) {
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
