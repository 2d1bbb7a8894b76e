// What findings say of names that a vocabulary does not have where they stand.
#pragma once

#include "description/vocabulary.h"

#include <string>
#include <string_view>

namespace tool {

// In the locale encoding.
std::string textOf(std::u16string_view text);

// Of an element in a parent that has none of the name; `root` is that of the description's vocabulary.
std::string unknownElement(std::u16string_view name, const ElementKind& parent, const ElementKind& root);

std::string unknownAttribute(std::u16string_view name, const ElementKind& element, bool isRoot);

std::string elementOfEntity(std::u16string_view name, std::u16string_view entity);

}  // namespace tool
