#include "description_reader.h"

#include "bad_byte.h"
#include "document/guard/document_parser.h"
#include "document/parse_document.h"
#include "library_diagnostics.h"
#include "text/lcp_text.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <new>
#include <string_view>

namespace tool {
namespace {

using jexxml::LcpText;

std::string textOf(const XMLCh* text) { return std::string(LcpText(text).view()); }

std::vector<std::string> namesOf(const auto& kinds) {
  std::vector<std::string> names;
  std::ranges::transform(kinds, std::back_inserter(names), [](const auto& kind) { return kind.name; });
  return names;
}

// Adds the elements that have a child of the name.
void addParents(const ElementKind& kind, std::string_view name, const std::string& shownKind, std::string& parents) {
  if (kind.child(name) != nullptr) {
    parents += (parents.empty() ? "; it belongs in " : ", ") + shownKind;
  }
  for (const ElementKind& child : kind.children) {
    addParents(child, name, inQuotes(child.name), parents);
  }
}

// What the parser reports, as findings.
class Reports final : public xercesc::ErrorHandler {
 public:
  explicit Reports(Description& described) : description(described) {}

  void warning(const xercesc::SAXParseException&) override {}
  void error(const xercesc::SAXParseException& exception) override {
    description.find({exception.getLineNumber(), exception.getColumnNumber()}, true, textOf(exception.getMessage()));
  }
  void fatalError(const xercesc::SAXParseException& exception) override { error(exception); }
  void resetErrors() override {}

 private:
  Description& description;
};

class DescriptionParser final : public jexxml::DocumentParser {
 public:
  DescriptionParser(std::size_t size, Description& described)
      : DocumentParser(jexxml::Budgets(size)), description(described), reports(described) {
    jexxml::configure(*this);
    setErrorHandler(&reports);
  }

  // The base ends an empty element, so that it comes last.
  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                    bool isRoot) override {
    const std::string start = prefix == nullptr || *prefix == 0 ? "" : textOf(prefix) + ":";
    openElements.push_back({.element = take(start + textOf(declaration.getBaseName()), isRoot)});
    if (openElements.back().element != ignored) {
      for (XMLSize_t i = 0; i < attributeCount; ++i) {
        takeAttribute(textOf(attributes.elementAt(i)->getQName()), textOf(attributes.elementAt(i)->getValue()));
      }
      requireAttributes();
    }
    DocumentParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
  }

  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override {
    openElements.pop_back();
    DocumentParser::endElement(declaration, uriId, isRoot, prefix);
  }

  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override {
    DocumentParser::docCharacters(text, length, isCdata);
    if (!openElements.empty() && openElements.back().element != ignored && !openElements.back().hasText &&
        !xercesc::XMLChar1_0::isAllSpaces(text, length)) {
      openElements.back().hasText = true;
      warn("text is ignored");
    }
  }

  void startEntityReference(const xercesc::XMLEntityDecl& entity) override {
    entities.push_back(textOf(entity.getName()));
    DocumentParser::startEntityReference(entity);
  }

  void endEntityReference(const xercesc::XMLEntityDecl& entity) override {
    entities.pop_back();
    DocumentParser::endEntityReference(entity);
  }

 private:
  static constexpr std::size_t ignored = static_cast<std::size_t>(-1);

  struct OpenElement {
    std::size_t element;  // its place in the description, or `ignored`
    bool hasText = false;
  };

  Place place() {
    const xercesc::Locator& locator = *getScanner()->getLocator();
    return {locator.getLineNumber(), locator.getColumnNumber()};
  }

  void warn(const std::string& text) { description.find(place(), false, text); }

  // The element's place in the description, or `ignored`: then with a warning, unless it is part of one that is
  // ignored.
  std::size_t take(const std::string& name, bool isRoot) {
    const std::size_t parent = isRoot ? 0 : openElements.back().element;
    if (parent == ignored) {
      return ignored;
    }
    if (!entities.empty()) {
      warn("element " + inQuotes(name) + " is ignored: it comes out of the entity " + inQuotes(entities.front()));
      return ignored;
    }
    const ElementKind* kind = isRoot ? description.root : kindIn(parent, name);
    if (kind == nullptr) {
      const ElementKind& parentKind = *description.elements[parent].kind;
      std::string hint;
      addParents(*description.root, name, "the root element", hint);
      if (hint.empty() && otherVocabulary().child(name) != nullptr) {
        hint =
            description.isManifest() ? "; it belongs in a project description" : "; it belongs in an archive manifest";
      }
      warn("element " + inQuotes(name) +
           " is ignored: " + (parent == 0 ? "the root element" : inQuotes(parentKind.name)) + " has no such element" +
           (hint.empty() ? suggestion(name, namesOf(parentKind.children)) : hint));
      return ignored;
    }
    description.elements.push_back({.kind = kind, .parent = parent, .place = place(), .attributes = {}});
    return description.elements.size() - 1;
  }

  const ElementKind& otherVocabulary() const {
    return description.isManifest() ? projectVocabulary() : manifestVocabulary();
  }

  // The first child of the root element that either vocabulary has shows which one it is.
  const ElementKind* kindIn(std::size_t parent, const std::string& name) {
    Element& element = description.elements[parent];
    const ElementKind* kind = element.kind->child(name);
    if (parent == 0 && kind == nullptr && description.elements.size() == 1) {
      kind = otherVocabulary().child(name);
      if (kind != nullptr) {
        element.kind = description.root = &otherVocabulary();
      }
    }
    description.showsKind |= kind != nullptr;
    return kind;
  }

  void takeAttribute(const std::string& name, const std::string& value) {
    Element& element = description.elements.back();
    if (element.kind->attribute(name) != nullptr) {
      element.attributes[name] = value;
      if (element.kind == description.root && name == "type" && (value == "archive" || value == "project")) {
        description.showsKind = true;
        element.kind = description.root = value == "project" ? &projectVocabulary() : &manifestVocabulary();
      }
    } else if (name != "xmlns" && !name.starts_with("xmlns:") && !name.starts_with("xml:") &&
               !name.starts_with("xsi:")) {
      warn("attribute " + inQuotes(name) +
           " is ignored: " + (description.elements.size() == 1 ? "the root element" : inQuotes(element.kind->name)) +
           " has no such attribute" + suggestion(name, namesOf(element.kind->attributes)));
    }
  }

  void requireAttributes() {
    const Element& element = description.elements.back();
    for (const AttributeKind& attribute : element.kind->attributes) {
      if (attribute.required && element[attribute.name].empty()) {
        warn("attribute " + inQuotes(attribute.name) + " of " + inQuotes(element.kind->name) +
             (element.attributes.contains(attribute.name) ? " is empty" : " is missing"));
      }
    }
  }

  Description& description;
  Reports reports;
  std::vector<OpenElement> openElements;
  std::vector<std::string> entities;  // that are open
};

}  // namespace

Description readDescription(const char* path) {
  Description description;
  KIVByteArray bytes;
  bool wasRead = false;
  const std::string diagnostics = diagnosticsOf([&] { wasRead = ReadXmlFile(path, bytes); });
  if (!wasRead) {
    description.find({}, true, diagnostics.substr(0, diagnostics.find('\n')));
    return description;
  }
  try {
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data), bytes.length, "");
    source.setCopyBufToStream(false);
    DescriptionParser(bytes.length, description).parse(source);
  } catch (const jexxml::DocumentRefused&) {  // which was reported
  } catch (const xercesc::XMLException& exception) {
    description.find({}, true, textOf(exception.getMessage()));
  } catch (const xercesc::DOMException& exception) {
    description.find({}, true, "DOMException code: " + std::to_string(exception.code));
  } catch (const xercesc::OutOfMemoryException&) {
    throw std::bad_alloc();
  }
  for (Finding& finding : description.findings) {
    findBadByte(bytes, finding);
  }
  return description;
}

}  // namespace tool
