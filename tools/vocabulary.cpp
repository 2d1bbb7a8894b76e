#include "vocabulary.h"

#include "schemas.h"
#include "text/lcp_text.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace tool {
namespace {

using xercesc::DOMElement;

std::string attributeOf(const DOMElement& element, const char16_t* name) {
  return std::string(jexxml::LcpText(element.getAttribute(name)).view());
}

// Elements of the schema that declare neither an element nor an attribute only hold those that do.
void readDeclarations(const DOMElement& schema, ElementKind& kind) {
  for (const DOMElement* child = schema.getFirstElementChild(); child != nullptr;
       child = child->getNextElementSibling()) {
    const std::u16string_view declares = child->getLocalName();
    if (declares == u"element") {
      readDeclarations(*child, kind.children.emplace_back(ElementKind{attributeOf(*child, u"name"), {}, {}}));
    } else if (declares == u"attribute") {
      kind.attributes.push_back({attributeOf(*child, u"name"), attributeOf(*child, u"use") == "required"});
    } else {
      readDeclarations(*child, kind);
    }
  }
}

ElementKind readSchema(std::string_view schema) {
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  parser.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(schema.data()), schema.size(), "schema"));
  ElementKind document;
  readDeclarations(*parser.getDocument()->getDocumentElement(), document);
  return std::move(document.children.front());
}

// Levenshtein's.
std::size_t distance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t k = 0; k < to.size(); ++k) {
      const std::size_t replaced = diagonal + (from[i] == to[k] ? 0 : 1);
      diagonal = row[k + 1];
      row[k + 1] = std::min({replaced, diagonal + 1, row[k] + 1});
    }
  }
  return row.back();
}

template <typename Kind>
const Kind* named(const std::vector<Kind>& kinds, std::string_view name) {
  const auto place = std::ranges::find(kinds, name, &Kind::name);
  return place == kinds.end() ? nullptr : &*place;
}

}  // namespace

const ElementKind* ElementKind::child(std::string_view childName) const { return named(children, childName); }

const AttributeKind* ElementKind::attribute(std::string_view attributeName) const {
  return named(attributes, attributeName);
}

const ElementKind& manifestVocabulary() {
  static const ElementKind root = readSchema(manifestSchema);
  return root;
}

const ElementKind& projectVocabulary() {
  static const ElementKind root = readSchema(projectSchema);
  return root;
}

std::string inQuotes(std::string_view name) { return '"' + std::string(name) + '"'; }

std::string suggestion(std::string_view name, const std::vector<std::string>& names) {
  constexpr std::size_t far = 3;
  constexpr std::size_t longest = 40;  // of a name that is compared
  const auto nearest = std::ranges::min_element(names, {}, [&](const std::string& other) {
    return std::min(name.size(), other.size()) > longest ? far : distance(name, other);
  });
  return nearest == names.end() || distance(name.substr(0, longest), *nearest) >= std::min(far, nearest->size())
             ? ""
             : "; did you mean " + inQuotes(*nearest) + "?";
}

}  // namespace tool
