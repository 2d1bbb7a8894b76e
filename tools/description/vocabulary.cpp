#include "description/vocabulary.h"

#include "text/lcp_text.h"
#include "texts.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <algorithm>
#include <utility>

namespace tool {

using xercesc::DOMElement;

// Other kinds of elements in the schema only contain declarations.
static void readDeclarations(const DOMElement& schema, ElementKind& kind) {
  for (const DOMElement* child = schema.getFirstElementChild(); child != nullptr;
       child = child->getNextElementSibling()) {
    const std::u16string_view declares = child->getLocalName();
    const XMLCh* name = child->getAttribute(u"name");
    if (declares == u"element") {
      readDeclarations(*child, kind.children.emplace_back(ElementKind{textOf(name), name, {}, {}}));
    } else if (declares == u"attribute") {
      const bool required = std::u16string_view(child->getAttribute(u"use")) == u"required";
      kind.attributes.push_back({textOf(name), name, required});
    } else {
      readDeclarations(*child, kind);
    }
  }
}

static ElementKind readSchema(std::string_view schema) {
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  parser.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(schema.data()), schema.size(), "schema"));
  ElementKind document;
  readDeclarations(*parser.getDocument()->getDocumentElement(), document);
  return std::move(document.children.front());
}

const auto* named(std::u16string_view name, const auto& kinds) {
  const auto found = std::ranges::find_if(kinds, [&](const auto& kind) { return kind.parserName == name; });
  return found == kinds.end() ? nullptr : &*found;
}

std::string textOf(std::u16string_view text) {
  return std::string(jexxml::LcpText(std::u16string(text).c_str()).view());
}

const ElementKind* ElementKind::child(std::u16string_view childName) const { return named(childName, children); }

const AttributeKind* ElementKind::attribute(std::u16string_view attributeName) const {
  return named(attributeName, attributes);
}

const ElementKind& manifestVocabulary() {
  static const ElementKind root = readSchema(manifestSchema);
  return root;
}

const ElementKind& projectVocabulary() {
  static const ElementKind root = readSchema(projectSchema);
  return root;
}

const ElementKind& otherVocabulary(const ElementKind& root) {
  return &root == &manifestVocabulary() ? projectVocabulary() : manifestVocabulary();
}

}  // namespace tool
