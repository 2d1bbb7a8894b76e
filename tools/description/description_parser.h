// DescriptionParser: the library's parser, which also reports what a load would silently ignore.
#pragma once

#include "description/description.h"
#include "document/guard/document_parser.h"

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// For one parse of the bytes of the description. Owns the document.
class DescriptionParser final : public jexxml::DocumentParser, private xercesc::ErrorHandler {
 public:
  explicit DescriptionParser(Description& described);

  void XMLDecl(const XMLCh* version, const XMLCh*, const XMLCh*, const XMLCh* actualEncoding) override;
  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override;
  void ignorableWhitespace(const XMLCh* /*text*/, XMLSize_t, bool) override { lastEnd = position(); }
  void docComment(const XMLCh* text) override;
  void endIntSubset() override;
  void docPI(const XMLCh* /*target*/, const XMLCh* /*data*/) override { lastEnd = position(); }
  void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text, const XMLCh* systemId,
             const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) override;

  // Reports a byte that cannot be decoded, at `at`, or anywhere after it if `isSoon`.
  bool reportBadByte(const ParserPosition& at, bool isSoon);

 private:
  struct OpenElement {
    std::size_t element;  // index in the description, or `ignored`
    Anchor tag;
    bool hasText = false;
  };

  void warning(const xercesc::SAXParseException& /*exception*/) override {}
  void error(const xercesc::SAXParseException& exception) override { report(Rule::notValid, exception); }
  void fatalError(const xercesc::SAXParseException& exception) override { report(Rule::notWellFormed, exception); }
  void resetErrors() override {}
  void report(Rule rule, const xercesc::SAXParseException& exception);
  bool reportUnclosedValue(const ParserPosition& at);

  ParserPosition position() const;
  Anchor anchor(Token token, const ParserPosition& at, SuppressionGroup suppressions) const;
  std::size_t take(const Anchor& tag, std::u16string_view name, bool isRoot);
  const ElementKind* kindIn(std::size_t parent, std::u16string_view name);
  void takeAttributes(const Attributes& attributes, XMLSize_t count);

  Description& description;
  std::vector<OpenElement> openElements;
  std::vector<std::u16string> entities;        // names of the open references
  SuppressionGroup referenceSuppressions = 0;  // before the outermost reference
  ParserPosition lastEnd;                      // of the preceding markup or text
  unsigned int errorCode = 0;                  // of the error that Xerces-C is reporting
  const XMLCh* errorDomain = nullptr;
  const XMLCh* errorText = nullptr;
};

}  // namespace tool
