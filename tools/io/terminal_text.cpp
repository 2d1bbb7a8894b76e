#include "io/terminal_text.h"

#include <langinfo.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace tool {
namespace {

std::size_t plainLength(std::string_view text) {
  const auto* end = std::ranges::find_if(text, [](char letter) { return letter < ' ' || letter > '~'; });
  return static_cast<std::size_t>(end - text.begin());
}

// Characters that move the cursor, begin a line, or change the direction of writing.
bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x61C || character == 0x200E ||
         character == 0x200F || (character >= 0x202A && character <= 0x202E) ||
         (character >= 0x2066 && character <= 0x2069);
}

struct Character {
  char32_t code;
  std::size_t length;  // in bytes; a run of printable ASCII counts as one character
};

// Decodes UTF-8 in its locales and "C", otherwise the locale encoding or, failing that, UTF-8. Leaves other bytes.
Character firstOf(std::string_view text) {
  if (const std::size_t plain = plainLength(text); plain > 0) {
    return {U' ', plain};
  }
  static const std::string_view codeset = nl_langinfo(CODESET);
  static const bool isUtf8 = codeset == "UTF-8" || codeset == "ANSI_X3.4-1968";
  wchar_t character = 0;
  std::mbstate_t state{};
  const std::size_t length = isUtf8 ? 0 : std::mbrtowc(&character, text.data(), text.size(), &state);
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

std::string escapeForTerminal(std::string_view text) {
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

std::size_t displayWidth(const std::string& text, std::size_t most) {
  constexpr std::size_t longest = 8;  // bytes of a column
  if (text.size() > longest * most || plainLength(text) == text.size()) {
    return text.size();
  }
  const std::string safe = escapeForTerminal(text);
  std::wstring wide(safe.size(), L'\0');
  const std::size_t length = mbstowcs(wide.data(), safe.c_str(), wide.size());
  const int columns = length == static_cast<std::size_t>(-1) ? -1 : wcswidth(wide.c_str(), length);
  return static_cast<std::size_t>(columns >= 0 ? columns : std::ranges::count_if(safe, [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;  // not a continuation byte
  }));
}

}  // namespace tool
