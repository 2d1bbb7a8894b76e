// The entries of a description: what a load puts into its record.
#ifndef QZJEXXML_TOOLS_ENTRIES_H
#define QZJEXXML_TOOLS_ENTRIES_H

#include "description.h"

#include <string>
#include <vector>

namespace tool {

// A root macro or a file, of either kind of description.
struct Entry {
  const Element* element;
  bool isFile;
  std::string key;    // the macro's name, or the source
  std::string value;  // its path, or the target
};

// In document order. Valid while the description is unchanged.
std::vector<Entry> entriesOf(const Description& description);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_ENTRIES_H
