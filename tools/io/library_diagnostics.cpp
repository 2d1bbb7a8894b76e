#include "io/library_diagnostics.h"

#include "io/scoped_streambuf.h"
#include "io/terminal_text.h"

#include <iostream>
#include <sstream>
#include <string_view>

namespace tool {
namespace {

// The library writes its line ends by themselves; any other one is part of a value.
class EscapedText : public std::stringbuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::string_view piece(text, static_cast<std::size_t>(length));
    const std::string safe = piece == "\n" ? "\n" : escapeForTerminal(piece);
    std::stringbuf::xsputn(safe.data(), static_cast<std::streamsize>(safe.size()));
    return length;
  }
};

}  // namespace

std::string diagnosticsOf(const std::function<void()>& action) {
  EscapedText text;
  const ScopedStreambuf redirection(std::cerr, &text);
  action();
  return text.str();
}

}  // namespace tool
