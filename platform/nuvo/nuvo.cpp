#include "nuvo.h"

#include <iconv.h>
#include <langinfo.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace {

constexpr std::string_view utf8Name = "UTF-8";
constexpr const char* utf16Name = "UTF-16LE";
constexpr std::size_t escapeLength = 6;  // \uHHHH

const char* localCodePage() {
  const std::string_view locale = nl_langinfo(_NL_LOCALE_NAME(LC_CTYPE));
  return locale == "C" || locale == "POSIX" ? utf8Name.data() : nl_langinfo(CODESET);
}

bool isSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

bool isPair(std::u16string_view text) {
  return text.size() > 1 && isHighSurrogate(text[0]) && isSurrogate(text[1]) && !isHighSurrogate(text[1]);
}

// For UTF-8, with the contract of Conversion::append. They need no loadable module of iconv, which a small system
// may lack.
bool appendAsUtf8(std::string& output, std::u16string_view& input) {
  std::size_t end = 0;
  while (end < input.size()) {
    if (!isSurrogate(input[end])) {
      ++end;
    } else if (isPair(input.substr(end))) {
      end += 2;
    } else {
      break;
    }
  }
  const std::size_t before = output.size();
  output.resize(before + 3 * end);  // a code unit takes at most three bytes
  const char* last = utf8::unchecked::utf16to8(input.data(), input.data() + end, output.data() + before);
  output.resize(static_cast<std::size_t>(last - output.data()));
  input.remove_prefix(end);
  return input.empty();
}

bool appendFromUtf8(std::u16string& output, std::string_view& input) {
  const char* end = utf8::find_invalid(input.data(), input.data() + input.size());
  utf8::unchecked::utf8to16(input.data(), end, std::back_inserter(output));
  input.remove_prefix(static_cast<std::size_t>(end - input.data()));
  return input.empty();
}

// A conversion descriptor of iconv. Where iconv does not know the pair of code pages, it converts nothing.
class Conversion {
 public:
  Conversion(const char* to, const char* from) : descriptor(iconv_open(to, from)) {}
  Conversion(const Conversion&) = delete;
  Conversion& operator=(const Conversion&) = delete;
  ~Conversion() {
    if (isOpen()) {
      iconv_close(descriptor);
    }
  }

  // Converts the longest convertible prefix of `input`, appends the result and removes the prefix. False when
  // something remains.
  template <typename To, typename From>
  bool append(std::basic_string<To>& output, std::basic_string_view<From>& input) const {
    if (!isOpen()) {
      return false;
    }
    iconv(descriptor, nullptr, nullptr, nullptr, nullptr);  // an exception may have ended the conversion before
    char* in = const_cast<char*>(reinterpret_cast<const char*>(input.data()));
    std::size_t inLeft = input.size() * sizeof(From);
    const bool whole = appendChunks(output, &in, &inLeft);
    input.remove_prefix(input.size() - inLeft / sizeof(From));
    // Some converters buffer the last character until they have seen the next one.
    return appendChunks(output, nullptr, nullptr) && whole;
  }

 private:
  bool isOpen() const { return descriptor != reinterpret_cast<iconv_t>(-1); }  // NOLINT(performance-no-int-to-ptr)

  template <typename To>
  bool appendChunks(std::basic_string<To>& output, char** in, std::size_t* inLeft) const {
    std::array<To, 256> chunk;
    for (;;) {
      char* out = reinterpret_cast<char*>(chunk.data());
      std::size_t outLeft = sizeof chunk;
      const bool done = iconv(descriptor, in, inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
      const bool chunkFull = !done && errno == E2BIG;
      output.append(chunk.data(), chunk.size() - outLeft / sizeof(To));
      if (!chunkFull) {
        return done;
      }
    }
  }

  iconv_t descriptor;
};

struct IconvConversions {
  explicit IconvConversions(const char* codeset) : fromUtf16(codeset, utf16Name), toUtf16(utf16Name, codeset) {}

  Conversion fromUtf16;
  Conversion toUtf16;
};

class CodePage {
 public:
  explicit CodePage(const char* codeset) : name(codeset) {
    if (name != utf8Name) {
      iconv = std::make_unique<IconvConversions>(codeset);
    }
  }

  bool isNamed(const char* codeset) const { return name == codeset; }

  // As Conversion::append, from UTF-16 and to it.
  bool append(std::string& output, std::u16string_view& input) const {
    return iconv ? iconv->fromUtf16.append(output, input) : appendAsUtf8(output, input);
  }
  bool append(std::u16string& output, std::string_view& input) const {
    return iconv ? iconv->toUtf16.append(output, input) : appendFromUtf8(output, input);
  }

  bool has(char16_t unit) const {
    std::string converted;
    std::u16string_view text(&unit, 1);
    return iconv ? iconv->fromUtf16.append(converted, text) : !isSurrogate(unit);
  }

 private:
  std::string name;
  std::unique_ptr<const IconvConversions> iconv;  // null for UTF-8
};

// The calling thread's code page; its descriptors stay open until the thread uses another one.
const CodePage& currentCodePage() {
  thread_local std::optional<CodePage> current;
  const char* name = localCodePage();
  if (!current || !current->isNamed(name)) {
    current.emplace(name);
  }
  return *current;
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

// The code unit that an escape at the beginning of `text` stands for; the backslash is left out: uHHHH.
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

// Whether a text that begins with a backslash begins, literally, with what would be read as an escape: of a code unit
// that the code page lacks, or of a backslash before such an escape (\uD800, \u005CuD800, \u005Cu005CuD800, ...).
bool readsAsEscape(std::u16string_view text, const CodePage& codePage) {
  text.remove_prefix(1);
  std::optional<char16_t> unit = namedUnit(text);
  while (unit == u'\\') {
    text.remove_prefix(escapeLength - 1);
    unit = namedUnit(text);
  }
  return unit && !codePage.has(*unit);
}

// Up to the first literal escape.
std::u16string_view unescapedRun(std::u16string_view text, const CodePage& codePage) {
  std::size_t end = text.find(u'\\');
  while (end != std::u16string_view::npos && !readsAsEscape(text.substr(end), codePage)) {
    end = text.find(u'\\', end + 1);
  }
  return text.substr(0, end);
}

std::string toLocalCodePage(std::u16string_view text, const CodePage& codePage) {
  std::string converted;
  while (true) {
    std::u16string_view run = unescapedRun(text, codePage);
    text.remove_prefix(run.size());
    while (!run.empty() && !codePage.append(converted, run)) {
      if (run.front() < 0x80) {  // only with a code page that iconv does not know
        converted += static_cast<char>(run.front());
      } else {
        appendEscape(converted, run.front());
      }
      run.remove_prefix(1);
    }
    if (text.empty()) {
      return converted;
    }
    appendEscape(converted, u'\\');
    text.remove_prefix(1);
  }
}

// Allocates room for `count` characters and a NUL, which is stored.
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

// The same characters in a new text of the other width: how ASCII converts in every code page.
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
  std::u16string converted;
  return currentCodePage().append(converted, view) ? newText(converted) : nullptr;
}

char* utf16_to_lcp(const char16_t* text, int length) {
  if (text == nullptr) {
    return nullptr;
  }
  const std::u16string_view view = viewOf(text, length);
  if (std::ranges::all_of(view, isPlain)) {
    return newTextOfAscii<char>(view);
  }
  return newText(toLocalCodePage(view, currentCodePage()));
}

std::size_t nuvoStrlen(const char* text) { return text == nullptr ? 0 : std::strlen(text); }

void nuvoFree(void* text) { std::free(text); }
