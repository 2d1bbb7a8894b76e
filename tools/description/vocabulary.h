// The two kinds of descriptions, as their schemas in share/ declare them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// In the locale encoding.
std::string textOf(std::u16string_view text);

struct AttributeKind {
  std::string name;
  std::u16string parserName;
  bool required;  // the element is of no use without it
};

struct ElementKind {
  // Null when there is none.
  const ElementKind* child(std::u16string_view name) const;
  const AttributeKind* attribute(std::u16string_view name) const;

  std::string name;
  std::u16string parserName;
  std::vector<AttributeKind> attributes;
  std::vector<ElementKind> children;
};

// The root elements, which the documents may name as they like. REQUIRES: Xerces-C is started.
const ElementKind& manifestVocabulary();
const ElementKind& projectVocabulary();
const ElementKind& otherVocabulary(const ElementKind& root);

}  // namespace tool
