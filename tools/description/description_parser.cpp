#include "description/description_parser.h"

#include "description/unknown_names.h"
#include "document/parse_document.h"
#include "io/quoting.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

namespace tool {
namespace {

using xercesc::XMLErrs;
using xercesc::XMLExcepts;
using xercesc::XMLString;

constexpr std::size_t ignored = static_cast<std::size_t>(-1);

// Names that a description may have for other readers.
bool isForOthers(std::u16string_view attribute) {
  return attribute == u"xmlns" || attribute.starts_with(u"xmlns:") || attribute.starts_with(u"xml:") ||
         attribute.starts_with(u"xsi:");
}

}  // namespace

DescriptionParser::DescriptionParser(Description& described)
    : DocumentParser(jexxml::Budgets(described.fileSize())), description(described) {
  jexxml::configure(*this);
  setErrorHandler(&reports);
}

void DescriptionParser::XMLDecl(const XMLCh* const version, const XMLCh* const encoding, const XMLCh* const standalone,
                                const XMLCh* const actualEncoding) {
  description.positions.setDeclaration(encoding, XMLString::equals(version, u"1.1"));
  DocumentParser::XMLDecl(version, encoding, standalone, actualEncoding);
}

// The base ends an empty element, and makes the node.
void DescriptionParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                                     const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                     XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  const bool hasPrefix = prefix != nullptr && *prefix != 0;
  const Anchor tag = entities.empty() ? anchor(Token::tag, position(), description.suppressions.takePending())
                                      : anchor(Token::reference, position(), referenceSuppressions);
  if (isRoot) {
    description.suppressions.setWholeFile(tag.suppressions);
  }
  const std::size_t element = take(
      tag, hasPrefix ? std::u16string(prefix) + u':' + declaration.getBaseName() : declaration.getBaseName(), isRoot);
  openElements.push_back({.element = element, .tag = tag});
  if (element != ignored) {
    takeAttributes(attributes, attributeCount);
  }
  DocumentParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
  if (element != ignored) {
    description.elements[element].node = fCurrentNode;
  }
  lastEnd = tag.position;
}

void DescriptionParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                   const XMLCh* prefix) {
  openElements.pop_back();
  description.suppressions.takePending();
  lastEnd = position();
  DocumentParser::endElement(declaration, uriId, isRoot, prefix);
}

void DescriptionParser::docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) {
  DocumentParser::docCharacters(text, length, isCdata);
  if (!openElements.empty() && !xercesc::XMLChar1_0::isAllSpaces(text, length)) {
    description.suppressions.takePending();
    OpenElement& parent = openElements.back();
    if (parent.element != ignored && !parent.hasText) {
      parent.hasText = true;
      description.report(Rule::ignoredText, anchor(Token::text, lastEnd, parent.tag.suppressions),
                         [] { return "text is ignored"; });
    }
  }
  lastEnd = position();
}

void DescriptionParser::ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) {
  DocumentParser::ignorableWhitespace(text, length, isCdata);
  lastEnd = position();
}

void DescriptionParser::docComment(const XMLCh* text) {
  lastEnd = position();
  if (entities.empty()) {
    description.suppressions.add(text, lastEnd);
  }
  DocumentParser::docComment(text);
}

void DescriptionParser::docPI(const XMLCh* target, const XMLCh* data) {
  lastEnd = position();
  DocumentParser::docPI(target, data);
}

void DescriptionParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
  if (entities.empty()) {
    referenceSuppressions = description.suppressions.takePending();
  }
  entities.emplace_back(entity.getName());
  DocumentParser::startEntityReference(entity);
}

void DescriptionParser::endEntityReference(const xercesc::XMLEntityDecl& entity) {
  entities.pop_back();
  lastEnd = position();
  DocumentParser::endEntityReference(entity);
}

void DescriptionParser::error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
                              const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) {
  errorCode = code;
  errorDomain = domain;
  errorText = text;
  DocumentParser::error(code, domain, type, text, systemId, publicId, line, column);
  errorText = nullptr;
}

bool DescriptionParser::isReporting(const XMLCh* domain, unsigned int code) const {
  return errorCode == code && XMLString::equals(errorDomain, domain);
}

// A message whose text is not that of Xerces-C comes from a limit of the base.
void DescriptionParser::report(Rule rule, const xercesc::SAXParseException& exception) {
  using xercesc::XMLUni;
  constexpr std::size_t longest = 1'000;
  const ParserPosition reported = {static_cast<std::uint32_t>(exception.getLineNumber()),
                                   static_cast<std::uint32_t>(exception.getColumnNumber())};
  Anchor at = anchor(Token::here, reported, 0);
  std::string message = textOf(std::u16string_view(exception.getMessage()).substr(0, longest));
  if (errorText == nullptr || !XMLString::equals(exception.getMessage(), errorText)) {
    rule = Rule::overLimit;
  } else if (isReporting(XMLUni::fgExceptDomain, XMLExcepts::Gen_CouldNotOpenDTD) ||
             isReporting(XMLUni::fgExceptDomain, XMLExcepts::Gen_CouldNotOpenExtEntity)) {
    rule = Rule::notLoadable;
    message += "; nothing outside the file is read";
  } else if (rule == Rule::notWellFormed && findWrongText(reported)) {
    return;
  } else if (isReporting(XMLUni::fgXMLErrDomain, XMLErrs::EndedWithTagsOnStack) && !openElements.empty()) {
    at = openElements.back().tag;
  } else if (isReporting(XMLUni::fgXMLErrDomain, XMLErrs::ExpectedEndOfTagX) && !openElements.empty()) {
    at.token = entities.empty() ? Token::insideTag : Token::reference;
    const Position start = description.positionOf(openElements.back().tag);
    message += "; it starts at " + std::to_string(start.line) + ':' + std::to_string(start.column);
  }
  description.report(rule, description.positionOf(at), message);
}

// What the parser notices late: its position for a byte that cannot be decoded is where it began to read a stretch of
// the file; a quote that is not closed is found in what follows the value that was meant.
bool DescriptionParser::findWrongText(const ParserPosition& at) {
  TokenPositions& positions = description.positions;
  const Position byte = positions.ofBadByte(at, XMLString::equals(errorDomain, xercesc::XMLUni::fgExceptDomain));
  if (byte.line != 0) {
    description.report(
        Rule::badByte, byte,
        positions.isUtf8()
            ? "a byte that is not UTF-8: save the file as UTF-8, or name its encoding in the XML declaration"
            : "a byte that is not of the file's encoding");
    return true;
  }
  const TokenPositions::Value value = entities.empty() ? positions.unclosedValue(lastEnd, at) : TokenPositions::Value();
  if (!value.attribute.empty()) {
    description.report(Rule::notWellFormed, value.position,
                       "the value of " + inQuotes(textOf(value.attribute)) + " is not closed" +
                           (value.hasMarkup ? R"(, or has a "<" that should be "&lt;")" : ""));
  }
  return !value.attribute.empty();
}

ParserPosition DescriptionParser::position() const {
  const xercesc::Locator& locator = *getScanner()->getLocator();
  return {static_cast<std::uint32_t>(locator.getLineNumber()), static_cast<std::uint32_t>(locator.getColumnNumber())};
}

// What an entity holds stands where the entity is referred to.
Anchor DescriptionParser::anchor(Token token, const ParserPosition& at, SuppressionGroup suppressions) const {
  return entities.empty() ? Anchor{token, at, {}, suppressions}
                          : Anchor{Token::reference, position(), {}, referenceSuppressions};
}

// The index of the element in the description, or `ignored`: then with a warning, unless it is part of one that is
// ignored.
std::size_t DescriptionParser::take(const Anchor& tag, std::u16string_view name, bool isRoot) {
  const std::size_t parent = isRoot ? 0 : openElements.back().element;
  if (parent == ignored) {
    return ignored;
  }
  if (!entities.empty()) {
    description.report(Rule::entityElement, tag, [&] { return elementOfEntity(name, entities.front()); });
    return ignored;
  }
  const ElementKind* kind = isRoot ? description.root : kindIn(parent, name);
  if (kind == nullptr) {
    description.report(Rule::unknownElement, tag,
                       [&] { return unknownElement(name, *description.elements[parent].kind, *description.root); });
    return ignored;
  }
  description.elements.push_back(
      {.kind = kind, .parent = parent, .end = tag.position, .suppressions = tag.suppressions, .node = nullptr});
  return description.elements.size() - 1;
}

// The first child of the root element that either vocabulary has shows which one it is.
const ElementKind* DescriptionParser::kindIn(std::size_t parent, std::u16string_view name) {
  Element& element = description.elements[parent];
  const ElementKind* kind = element.kind->child(name);
  if (kind == nullptr && description.elements.size() == 1) {
    kind = otherVocabulary(*description.root).child(name);
    if (kind != nullptr) {
      element.kind = description.root = &otherVocabulary(*description.root);
    }
  }
  description.showsKind |= kind != nullptr;
  return kind;
}

void DescriptionParser::takeAttributes(const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count) {
  const Element& element = description.elements.back();
  const ElementKind& kind = *element.kind;
  values.assign(kind.attributes.size(), nullptr);
  for (XMLSize_t i = 0; i < count; ++i) {
    const std::u16string_view name = attributes.elementAt(i)->getQName();
    const AttributeKind* known = kind.attribute(name);
    if (known != nullptr) {
      values[static_cast<std::size_t>(known - kind.attributes.data())] = attributes.elementAt(i)->getValue();
      if (name == u"type") {  // which the root element alone has
        takeType(attributes.elementAt(i)->getValue());
      }
    } else if (!isForOthers(name)) {
      description.report(Rule::unknownAttribute, Anchor{Token::attribute, element.end, name, element.suppressions},
                         [&] { return unknownAttribute(name, kind, description.elements.size() == 1); });
    }
  }
  requireAttributes();
}

void DescriptionParser::takeType(std::u16string_view value) {
  if (value == u"archive" || value == u"project") {
    description.showsKind = true;
    description.elements.front().kind = description.root =
        value == u"project" ? &projectVocabulary() : &manifestVocabulary();
  }
}

void DescriptionParser::requireAttributes() {
  const Element& element = description.elements.back();
  for (std::size_t i = 0; i < values.size(); ++i) {
    const AttributeKind& attribute = element.kind->attributes[i];
    if (attribute.required && (values[i] == nullptr || *values[i] == 0)) {
      const bool isMissing = values[i] == nullptr;
      description.report(isMissing ? Rule::missingAttribute : Rule::emptyAttribute,
                         isMissing ? element.tag() : element.attribute(attribute), [&] {
                           return "attribute " + inQuotes(attribute.name) + " of " + inQuotes(element.kind->name) +
                                  (isMissing ? " is missing" : " is empty");
                         });
    }
  }
}

}  // namespace tool
