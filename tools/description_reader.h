// Reading a description with the places of what is in it, and of what a load would silently ignore.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_READER_H
#define QZJEXXML_TOOLS_DESCRIPTION_READER_H

#include "vocabulary.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tool {

// Keeps the parser library started over many loads, which takes longer than a small file. Where it does not start, the
// loads say so.
class ParserLibrary {
 public:
  ParserLibrary();
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;
  ~ParserLibrary();

 private:
  bool started = false;
};

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

// A root macro or a file, of either kind of description.
struct Entry {
  const Element* element;
  bool isFile;
  std::string key;    // the macro's name, or the source
  std::string value;  // its path, or the target
};

// In document order. Valid while the description is unchanged.
std::vector<Entry> entriesOf(const Description& description);

// Reads the file as a load does, up to a fatal error. What cannot be read is a finding. Texts are in the local code
// page. Throws std::bad_alloc. REQUIRES: the parser library is started.
Description readDescription(const char* path);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_READER_H
