#include "description/unknown_names.h"

#include "io/quoting.h"
#include "text/lcp_text.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace tool {
namespace {

// Cut before it is converted, so that a long name costs little for each time that it is wrong.
std::string shortTextOf(std::u16string_view name) {
  constexpr std::size_t longest = 200;  // more than is shown
  return textOf(name.substr(0, longest));
}

std::vector<std::string_view> namesOf(const auto& kinds) {
  std::vector<std::string_view> names;
  std::ranges::transform(kinds, std::back_inserter(names),
                         [](const auto& kind) -> std::string_view { return kind.name; });
  return names;
}

// Adds the elements that have a child of the name.
void addParents(const ElementKind& kind, std::u16string_view name, const std::string& shownKind, std::string& parents) {
  if (kind.child(name) != nullptr) {
    parents += (parents.empty() ? "; it belongs in " : ", ") + shownKind;
  }
  for (const ElementKind& child : kind.children) {
    addParents(child, name, inQuotes(child.name), parents);
  }
}

std::string ofElement(const ElementKind& kind, bool isRoot) {
  return isRoot ? "the root element" : inQuotes(kind.name);
}

}  // namespace

std::string textOf(std::u16string_view text) {
  return std::string(jexxml::LcpText(std::u16string(text).c_str()).view());
}

std::string unknownElement(std::u16string_view name, const ElementKind& parent, const ElementKind& root) {
  std::string hint;
  addParents(root, name, "the root element", hint);
  if (otherVocabulary(root).child(name) != nullptr) {
    hint = &root == &manifestVocabulary() ? "; it belongs in a project description"
                                          : "; it belongs in an archive manifest";
  }
  return "element " + inQuotes(shortTextOf(name)) + " is ignored: " + ofElement(parent, &parent == &root) +
         " has no such element" + (hint.empty() ? suggestion(shortTextOf(name), namesOf(parent.children)) : hint);
}

std::string unknownAttribute(std::u16string_view name, const ElementKind& element, bool isRoot) {
  return "attribute " + inQuotes(shortTextOf(name)) + " is ignored: " + ofElement(element, isRoot) +
         " has no such attribute" + suggestion(shortTextOf(name), namesOf(element.attributes));
}

std::string elementOfEntity(std::u16string_view name, std::u16string_view entity) {
  return "element " + inQuotes(shortTextOf(name)) + " is ignored: it comes out of the entity " +
         inQuotes(shortTextOf(entity));
}

}  // namespace tool
