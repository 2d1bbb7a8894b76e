#include "description/vocabulary.h"

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

std::string textOf(const XMLCh* text) { return std::string(jexxml::LcpText(text).view()); }

// Elements of the schema that declare neither an element nor an attribute only hold those that do.
void readDeclarations(const DOMElement& schema, ElementKind& kind) {
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

const auto* named(const auto& kinds, auto name, auto member) {
  const auto place = std::ranges::find(kinds, name, member);
  return place == kinds.end() ? nullptr : &*place;
}

}  // namespace

const ElementKind* ElementKind::child(std::u16string_view childName) const {
  return named(children, childName, &ElementKind::parserName);
}

const AttributeKind* ElementKind::attribute(std::u16string_view attributeName) const {
  return named(attributes, attributeName, &AttributeKind::parserName);
}

const AttributeKind* ElementKind::attribute(std::string_view attributeName) const {
  return named(attributes, attributeName, &AttributeKind::name);
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

std::string inQuotes(std::string_view name) { return '"' + cut(name, 100) + '"'; }

// In UTF-8, not within a character.
std::string cut(std::string_view text, std::size_t most) {
  if (text.size() <= most) {
    return std::string(text);
  }
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80) {
    --most;
  }
  return std::string(text.substr(0, most)) + "...";
}

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
