// The elements and attributes of both kinds of descriptions, read from the schemas in share/.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// In the locale encoding.
std::string textOf(std::u16string_view text);

struct AttributeKind {
  std::string name;
  std::u16string parserName;
  bool required;  // the element is useless without it
};

struct ElementKind {
  // Null if there is none.
  const ElementKind* child(std::u16string_view name) const;
  const AttributeKind* attribute(std::u16string_view name) const;

  std::string name;
  std::u16string parserName;
  std::vector<AttributeKind> attributes;
  std::vector<ElementKind> children;
};

// The root elements, whose names documents may choose. REQUIRES: Xerces-C is started.
const ElementKind& manifestVocabulary();
const ElementKind& projectVocabulary();
const ElementKind& otherVocabulary(const ElementKind& root);

}  // namespace tool
