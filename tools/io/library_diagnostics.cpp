#include "io/library_diagnostics.h"

#include "io/redirection.h"
#include "io/terminal_text.h"

#include <iostream>
#include <sstream>
#include <string_view>

namespace tool {
namespace {

// The library writes its line ends by themselves; any other one is part of a value.
class ShownText : public std::stringbuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::string_view piece(text, static_cast<std::size_t>(length));
    const std::string safe = piece == "\n" ? "\n" : shown(piece);
    std::stringbuf::xsputn(safe.data(), static_cast<std::streamsize>(safe.size()));
    return length;
  }
};

}  // namespace

std::string diagnosticsOf(const std::function<void()>& action) {
  ShownText text;
  const Redirection redirection(std::cerr, &text);
  action();
  return text.str();
}

}  // namespace tool
