#include "description/description_parser.h"

#include "document/parse_document.h"
#include "io/quoting.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <iterator>

namespace tool {

using xercesc::XMLErrs;
using xercesc::XMLExcepts;
using xercesc::XMLString;
using xercesc::XMLUni;

constexpr std::size_t ignored = static_cast<std::size_t>(-1);

// Attributes that a description may have for other programs.
static bool isForOthers(std::u16string_view attribute) {
  return attribute == u"xmlns" || attribute.starts_with(u"xmlns:") || attribute.starts_with(u"xml:") ||
         attribute.starts_with(u"xsi:");
}

// Cuts the name before the conversion, so that the findings about a long name cost little.
static std::string shortName(std::u16string_view name) { return textOf(name.substr(0, 200)); }

static std::string nearestOf(const auto& kinds, std::u16string_view name) {
  std::vector<std::string_view> names;
  std::ranges::transform(kinds, std::back_inserter(names), [](auto& kind) -> std::string_view { return kind.name; });
  return suggestion(shortName(name), names);
}

// `what` is "element" or "attribute".
static std::string isUnknown(const std::string& what, std::u16string_view name, const ElementKind& owner, bool isRoot) {
  return what + ' ' + inQuotes(shortName(name)) +
         " is ignored: " + (isRoot ? "the root element" : inQuotes(owner.name)) + " has no such " + what;
}

// Lists the elements that have a child of the name.
static std::string parentsIn(const ElementKind& kind, const std::string& nameOfKind, std::u16string_view name) {
  std::string parents = kind.child(name) != nullptr ? ", " + nameOfKind : "";
  for (const ElementKind& child : kind.children) {
    parents += parentsIn(child, inQuotes(child.name), name);
  }
  return parents;
}

// Returns a hint for an element that is unknown in `parent`: where it belongs, or the nearest name.
static std::string homeOf(std::u16string_view name, const ElementKind& parent, const ElementKind& root) {
  const bool isManifest = &root == &manifestVocabulary();
  if (otherVocabulary(root).child(name) != nullptr) {
    return isManifest ? "; it belongs in a project description" : "; it belongs in an archive manifest";
  }
  const std::string parents = parentsIn(root, "the root element", name);
  return parents.empty() ? nearestOf(parent.children, name) : "; it belongs in " + parents.substr(2);
}

DescriptionParser::DescriptionParser(Description& described)
    : DocumentParser(jexxml::Budgets(described.fileSize())), description(described) {
  jexxml::configure(*this);
  setErrorHandler(this);
}

void DescriptionParser::XMLDecl(const XMLCh* version, const XMLCh*, const XMLCh*, const XMLCh* actualEncoding) {
  description.positions.setDeclaration(actualEncoding, XMLString::equals(version, u"1.1"));
  lastEnd = position();
}

// The base creates the node, and calls endElement for an empty element.
void DescriptionParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                                     const XMLCh* prefix, const Attributes& attributes, XMLSize_t attributeCount,
                                     bool isEmpty, bool isRoot) {
  const Anchor tag = anchor(Token::tag, position(), description.suppressions.takePending());
  if (isRoot) {
    description.suppressions.setWholeFile(tag.suppressions);
  }
  const std::size_t element = take(tag, declaration.getFullName(), isRoot);
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

void DescriptionParser::docCharacters(const XMLCh* text, XMLSize_t length, bool /*isCdata*/) {
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

void DescriptionParser::docComment(const XMLCh* text) {
  lastEnd = position();
  if (entities.empty()) {
    description.suppressions.add(text, lastEnd);
  }
}

void DescriptionParser::endIntSubset() {
  lastEnd = position();
  DocumentParser::endIntSubset();
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

// DocumentParser reports a limit with a text of its own, which differs from Xerces-C's text.
void DescriptionParser::report(Rule rule, const xercesc::SAXParseException& exception) {
  constexpr std::size_t longest = 1'000;
  const ParserPosition reported = {static_cast<std::uint32_t>(exception.getLineNumber()),
                                   static_cast<std::uint32_t>(exception.getColumnNumber())};
  const auto isError = [this](unsigned int code, const XMLCh* domain = XMLUni::fgXMLErrDomain) {
    return errorCode == code && XMLString::equals(errorDomain, domain);
  };
  Anchor at = anchor(Token::tag, reported, 0);
  std::string message = textOf(std::u16string_view(exception.getMessage()).substr(0, longest));
  if (errorText == nullptr || !XMLString::equals(exception.getMessage(), errorText)) {
    rule = Rule::overLimit;
  } else if (isError(XMLExcepts::Gen_CouldNotOpenDTD, XMLUni::fgExceptDomain) ||
             isError(XMLExcepts::Gen_CouldNotOpenExtEntity, XMLUni::fgExceptDomain)) {
    rule = Rule::notLoadable;
    message += "; nothing outside the file is read";
  } else if (rule == Rule::notWellFormed &&
             (reportBadByte(reported, XMLString::equals(errorDomain, XMLUni::fgExceptDomain)) ||
              reportUnclosedValue(reported))) {
    return;
  } else if (isError(XMLErrs::EndedWithTagsOnStack) && !openElements.empty()) {
    at = openElements.back().tag;
  } else if (isError(XMLErrs::ExpectedEndOfTagX) && !openElements.empty()) {
    at.token = entities.empty() ? Token::insideTag : Token::reference;
    const Position start = description.positionOf(openElements.back().tag);
    message += "; it starts at " + std::to_string(start.line) + ':' + std::to_string(start.column);
  }
  description.report(rule, description.positionOf(at), message);
}

// Xerces-C reports an undecodable byte at the start of its block. Reports its position; returns false if there is none.
bool DescriptionParser::reportBadByte(const ParserPosition& at, bool isSoon) {
  const Position byte = description.positions.ofBadByte(at, isSoon);
  if (byte.line != 0) {
    description.report(
        Rule::badByte, byte,
        description.positions.isUtf8()
            ? "the byte is not valid UTF-8; save the file as UTF-8, or name its encoding in the XML declaration"
            : "the byte is not valid in the file's encoding");
  }
  return byte.line != 0;
}

// Xerces-C reports an unclosed quote after the value. Reports the attribute; returns false if there is none.
bool DescriptionParser::reportUnclosedValue(const ParserPosition& at) {
  const auto value = entities.empty() ? description.positions.unclosedValue(lastEnd, at) : TokenPositions::Value();
  if (!value.attribute.empty()) {
    description.report(Rule::notWellFormed, value.position,
                       "the value of " + inQuotes(textOf(value.attribute)) + " is not closed, or " +
                           (value.hasMarkup ? R"(has a "<" that should be "&lt;")" : "has no space after it"));
  }
  return !value.attribute.empty();
}

ParserPosition DescriptionParser::position() const {
  const xercesc::Locator& locator = *getScanner()->getLocator();
  return {static_cast<std::uint32_t>(locator.getLineNumber()), static_cast<std::uint32_t>(locator.getColumnNumber())};
}

// A finding about the content of an entity has the position of the reference.
Anchor DescriptionParser::anchor(Token token, const ParserPosition& at, SuppressionGroup suppressions) const {
  return entities.empty() ? Anchor{token, at, {}, suppressions}
                          : Anchor{Token::reference, position(), {}, referenceSuppressions};
}

// Adds the element and returns its index, or returns `ignored`. Reports an ignored element with a known parent.
std::size_t DescriptionParser::take(const Anchor& tag, std::u16string_view name, bool isRoot) {
  const std::size_t parent = isRoot ? 0 : openElements.back().element;
  if (parent == ignored) {
    return ignored;
  }
  if (!entities.empty()) {
    description.report(Rule::entityElement, tag, [&] {
      return "element " + inQuotes(shortName(name)) + " is ignored: it comes from the entity " +
             inQuotes(shortName(entities.front()));
    });
    return ignored;
  }
  const ElementKind* kind = isRoot ? description.root : kindIn(parent, name);
  if (kind == nullptr) {
    description.report(Rule::unknownElement, tag, [&] {
      const ElementKind& owner = *description.elements[parent].kind;
      return isUnknown("element", name, owner, parent == 0) + homeOf(name, owner, *description.root);
    });
    return ignored;
  }
  description.elements.push_back(
      {.kind = kind, .parent = parent, .end = tag.position, .suppressions = tag.suppressions, .node = nullptr});
  return description.elements.size() - 1;
}

// The first known child of the root element decides the kind of the description.
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

// Only root elements have the attribute `type`.
void DescriptionParser::takeAttributes(const Attributes& attributes, XMLSize_t count) {
  Element& element = description.elements.back();
  for (XMLSize_t i = 0; i < count; ++i) {
    const std::u16string_view name = attributes.elementAt(i)->getQName();
    const std::u16string_view value = attributes.elementAt(i)->getValue();
    if (element.kind->attribute(name) == nullptr && !isForOthers(name)) {
      description.report(Rule::unknownAttribute, element.attribute(name), [&] {
        return isUnknown("attribute", name, *element.kind, description.elements.size() == 1) +
               nearestOf(element.kind->attributes, name);
      });
    } else if (name == u"type" && (value == u"archive" || value == u"project")) {
      description.showsKind = true;
      element.kind = description.root = value == u"project" ? &projectVocabulary() : &manifestVocabulary();
    }
  }
  for (const AttributeKind& attribute : element.kind->attributes) {
    const XMLCh* value = attribute.required ? nullptr : u"not required";
    for (XMLSize_t i = 0; attribute.required && i < count; ++i) {
      value = attributes.elementAt(i)->getQName() == attribute.parserName ? attributes.elementAt(i)->getValue() : value;
    }
    if (value == nullptr || *value == 0) {
      description.report(value == nullptr ? Rule::missingAttribute : Rule::emptyAttribute,
                         value == nullptr ? element.tag() : element.attribute(attribute.parserName), [&] {
                           return "attribute " + inQuotes(attribute.name) + " of " + inQuotes(element.kind->name) +
                                  (value == nullptr ? " is missing" : " is empty");
                         });
    }
  }
}

}  // namespace tool
