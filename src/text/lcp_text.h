// LcpText: a Xerces-C string converted to the locale encoding, for printing, comparing and copying.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <iosfwd>
#include <string_view>

namespace jexxml {

// Owns the converted text. Not copyable.
class LcpText {
 public:
  // Converts `string` up to its NUL. Has no text if `string` is null.
  explicit LcpText(const XMLCh* string);
  LcpText(const LcpText&) = delete;
  LcpText& operator=(const LcpText&) = delete;
  ~LcpText();

  bool isNull() const { return text == nullptr; }

  // The converted text; empty if there is none. Valid as long as this object.
  std::string_view view() const;

 private:
  char* text;
};

// Writes the text, if there is any.
std::ostream& operator<<(std::ostream& stream, const LcpText& text);

}  // namespace jexxml
