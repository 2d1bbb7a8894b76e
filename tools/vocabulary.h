// The two kinds of descriptions, as their schemas in share/ declare them.
#ifndef QZJEXXML_TOOLS_VOCABULARY_H
#define QZJEXXML_TOOLS_VOCABULARY_H

#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct AttributeKind {
  std::string name;
  bool required;  // the element is of no use without it
};

struct ElementKind {
  const ElementKind* child(std::string_view name) const;
  const AttributeKind* attribute(std::string_view name) const;

  std::string name;
  std::vector<AttributeKind> attributes;
  std::vector<ElementKind> children;
};

// The root elements, which the documents may name as they like. REQUIRES: the parser library is started.
const ElementKind& manifestVocabulary();
const ElementKind& projectVocabulary();

// In double quotes.
std::string inQuotes(std::string_view name);

// What a writer may have meant by a name: `; did you mean "NAME"?` with the nearest of the names, or nothing when none
// is near.
std::string suggestion(std::string_view name, const std::vector<std::string>& names);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_VOCABULARY_H
