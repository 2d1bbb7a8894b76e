#include "nuvo.h"

#include <langinfo.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr std::size_t escapeLength = 6;  // \uHHHH

bool isLocaleUtf8() {
  const std::string_view locale = nl_langinfo(_NL_LOCALE_NAME(LC_CTYPE));
  return locale == "C" || std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

bool isSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

bool isPair(std::u16string_view text) {
  return text.size() > 1 && isHighSurrogate(text[0]) && isSurrogate(text[1]) && !isHighSurrogate(text[1]);
}

char32_t firstPoint(std::u16string_view text) {
  return isPair(text) ? 0x10000U + ((text[0] - 0xD800U) << 10U) + (text[1] - 0xDC00U) : text[0];
}

void appendPoint(std::u16string& output, char32_t point) {
  if (point > 0xFFFF) {
    output += static_cast<char16_t>(0xD800U + ((point - 0x10000U) >> 10U));
    point = 0xDC00U + (point & 0x3FFU);
  }
  output += static_cast<char16_t>(point);
}

// Writes characters in the locale encoding, one by one. iconv would convert a whole text, and again after each
// character that the encoding lacks.
class Encoder {
 public:
  // Returns false and writes nothing if the encoding lacks the character.
  bool append(std::string& output, char32_t point) {
    if (point < 0x80 && std::mbsinit(&state) != 0) {
      output += static_cast<char>(point);
      return true;
    }
    if (isUtf8) {
      if (!isSurrogate(point)) {
        utf8::unchecked::append(point, std::back_inserter(output));
      }
      return !isSurrogate(point);
    }
    std::array<char, MB_LEN_MAX> bytes;
    const std::mbstate_t before = state;
    const std::size_t length = std::wcrtomb(bytes.data(), static_cast<wchar_t>(point), &state);
    if (length > bytes.size()) {
      state = before;
      return false;
    }
    output.append(bytes.data(), length);
    return true;
  }

  // Writes the character that some encodings hold back until the next one is known.
  void finish(std::string& output) {
    if (std::mbsinit(&state) == 0) {
      append(output, U'\0');
      output.pop_back();
    }
  }

  static bool has(char16_t unit) {
    std::string converted;
    return Encoder().append(converted, unit);
  }

 private:
  bool isUtf8 = isLocaleUtf8();
  std::mbstate_t state = {};
};

// Null if the bytes are not valid in the locale encoding.
std::optional<std::u16string> decoded(std::string_view bytes) {
  std::u16string text;
  if (isLocaleUtf8()) {
    if (utf8::find_invalid(bytes.begin(), bytes.end()) != bytes.end()) {
      return std::nullopt;
    }
    utf8::unchecked::utf8to16(bytes.begin(), bytes.end(), std::back_inserter(text));
    return text;
  }
  std::mbstate_t state = {};
  const auto append = [&](const char* from, std::size_t size) {
    wchar_t point = 0;
    const std::size_t length = std::mbrtowc(&point, from, size, &state);
    if (length <= size) {
      appendPoint(text, static_cast<char32_t>(point));
    }
    return length == 0 && point == 0 ? 1 : length;  // 0 is NUL, or the second of two characters
  };
  while (!bytes.empty()) {
    const std::size_t length = append(bytes.data(), bytes.size());
    if (length > bytes.size()) {
      return std::nullopt;
    }
    bytes.remove_prefix(length);
  }
  if (std::mbsinit(&state) == 0) {
    append("", 1);
  }
  return text;
}

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

// ASCII that cannot begin an escape.
bool isPlain(char16_t unit) { return unit < 0x80 && unit != u'\\'; }

void appendEscape(std::string& output, char16_t unit) {
  output += "\\u";
  for (const unsigned shift : {12U, 8U, 4U, 0U}) {
    output += "0123456789ABCDEF"[(unit >> shift) & 0xFU];
  }
}

// The code unit of the escape at the beginning of `text`, which has no backslash: uHHHH.
std::optional<char16_t> namedUnit(std::u16string_view text) {
  constexpr std::size_t digits = escapeLength - 2;
  if (text.size() <= digits || text.front() != u'u') {
    return std::nullopt;
  }
  unsigned unit = 0;
  for (const char16_t digit : text.substr(1, digits)) {
    if (digit >= u'0' && digit <= u'9') {
      unit = unit * 16 + (digit - u'0');
    } else if (digit >= u'A' && digit <= u'F') {
      unit = unit * 16 + 10 + (digit - u'A');
    } else {
      return std::nullopt;
    }
  }
  return static_cast<char16_t>(unit);
}

// Whether the text, which begins with a backslash, literally begins with an escape: that of a code unit that the
// encoding lacks, or that of a backslash before such an escape (\uD800, \u005CuD800, \u005Cu005CuD800, ...).
bool readsAsEscape(std::u16string_view text) {
  text.remove_prefix(1);
  std::optional<char16_t> unit = namedUnit(text);
  while (unit == u'\\') {
    text.remove_prefix(escapeLength - 1);
    unit = namedUnit(text);
  }
  return unit && !Encoder::has(*unit);
}

std::string encoded(std::u16string_view text) {
  std::string bytes;
  Encoder encoder;
  while (!text.empty()) {
    const std::size_t units = isPair(text) ? 2 : 1;
    const bool isEscape = text[0] == u'\\' && readsAsEscape(text);
    if (isEscape || !encoder.append(bytes, firstPoint(text))) {
      encoder.finish(bytes);
      std::ranges::for_each(text.substr(0, units), [&](char16_t unit) { appendEscape(bytes, unit); });
    }
    text.remove_prefix(units);
  }
  encoder.finish(bytes);
  return bytes;
}

// Allocates a text of `count` characters, and stores a NUL after them.
template <typename Char>
Char* allocateText(std::size_t count) {
  auto* text = static_cast<Char*>(std::malloc((count + 1) * sizeof(Char)));
  if (text == nullptr) {
    throw std::bad_alloc();
  }
  text[count] = Char{0};
  return text;
}

template <typename Char>
Char* newText(const std::basic_string<Char>& content) {
  Char* text = allocateText<Char>(content.size());
  std::copy(content.begin(), content.end(), text);
  return text;
}

// Copies ASCII characters to a new text of the other width. That converts them in every locale encoding.
template <typename To, typename From>
To* newTextOfAscii(std::basic_string_view<From> ascii) {
  To* text = allocateText<To>(ascii.size());
  for (std::size_t i = 0; i < ascii.size(); ++i) {
    text[i] = static_cast<To>(ascii[i]);
  }
  return text;
}

template <typename Char>
std::basic_string_view<Char> viewOf(const Char* text, int length) {
  return length < 0 ? std::basic_string_view<Char>(text)
                    : std::basic_string_view<Char>(text, static_cast<std::size_t>(length));
}

}  // namespace

char16_t* lcp_to_utf16(const char* text, int length) {
  if (text == nullptr) {
    return nullptr;
  }
  std::string_view view = viewOf(text, length);
  if (std::ranges::all_of(view, isAscii)) {
    return newTextOfAscii<char16_t>(view);
  }
  const std::optional<std::u16string> text16 = decoded(view);
  return text16 ? newText(*text16) : nullptr;
}

char* utf16_to_lcp(const char16_t* text, int length) {
  if (text == nullptr) {
    return nullptr;
  }
  const std::u16string_view view = viewOf(text, length);
  if (std::ranges::all_of(view, isPlain)) {
    return newTextOfAscii<char>(view);
  }
  return newText(encoded(view));
}

std::size_t nuvoStrlen(const char* text) { return text == nullptr ? 0 : std::strlen(text); }

void nuvoFree(void* text) { std::free(text); }
