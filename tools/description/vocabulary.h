// The elements and attributes of both kinds of descriptions, read from the schemas in share/.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Converts the text to the locale encoding.
std::string textOf(std::u16string_view text);

struct AttributeKind {
  std::string name;
  std::u16string parserName;
  bool required;  // the element is useless without it
};

struct ElementKind {
  // Return null if there is none.
  const ElementKind* child(std::u16string_view name) const;
  const AttributeKind* attribute(std::u16string_view name) const;

  std::string name;
  std::u16string parserName;
  std::vector<AttributeKind> attributes;
  std::vector<ElementKind> children;
};

// The root elements; a document may give its root element any name. REQUIRES: Xerces-C is started.
const ElementKind& manifestVocabulary();
const ElementKind& projectVocabulary();
const ElementKind& otherVocabulary(const ElementKind& root);

}  // namespace tool
