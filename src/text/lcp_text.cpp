#include "text/lcp_text.h"

#include <nuvo.h>

#include <ostream>
#include <type_traits>

namespace jexxml {

static_assert(std::is_same_v<XMLCh, char16_t>, "libnuvo and Xerces-C have the same 16-bit type");

LcpText::LcpText(const XMLCh* string) : text(utf16_to_lcp(string, -1)) {}

LcpText::~LcpText() {
  if (text != nullptr) {
    nuvoFree(text);
  }
}

std::string_view LcpText::view() const {
  return isNull() ? std::string_view() : std::string_view(text, nuvoStrlen(text));
}

std::ostream& operator<<(std::ostream& stream, const LcpText& text) { return stream << text.view(); }

}  // namespace jexxml
