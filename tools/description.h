// A description as it is read: its elements and what there is to say of them, with their places.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_H
#define QZJEXXML_TOOLS_DESCRIPTION_H

#include "vocabulary.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tool {

// Behind the tag, text or mistake. Zeros when there is none.
struct Place {
  std::uint64_t line = 0;
  std::uint64_t column = 0;
};

// "FILE:LINE:COLUMN", or "FILE" when there is no place.
std::string placeOf(const std::string& file, const Place& place);

struct Finding {
  Place place;
  bool isError;  // the description does not load; else a warning
  std::string text;
};

// An element that a load takes.
struct Element {
  // Empty for an absent attribute.
  const std::string& operator[](const std::string& attribute) const;

  const ElementKind* kind;
  std::size_t parent;  // its place among the elements; the root element's is its own
  Place place;
  std::map<std::string, std::string> attributes;
};

struct Description {
  // Adds a finding; of warnings, a thousand.
  void find(const Place& place, bool isError, const std::string& text);
  bool isManifest() const { return root == &manifestVocabulary(); }

  const ElementKind* root = &manifestVocabulary();  // as the content shows, or else the attribute `type`
  bool showsKind = false;                           // else it may be of either
  std::vector<Element> elements;                    // in document order, the root element first
  std::vector<Finding> findings;
  std::size_t warnings = 0;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_H
