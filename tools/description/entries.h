// The entries of a description: what a load puts into its record.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_ENTRIES_H
#define QZJEXXML_TOOLS_DESCRIPTION_ENTRIES_H

#include "description/description.h"

#include <string>
#include <vector>

namespace tool {

// A root macro or a file, of either kind of description.
struct Entry {
  bool counts() const { return overriddenBy == nullptr; }

  const Element* element;
  bool isFile;
  std::string key;    // the macro's name, or the source
  std::string value;  // its path, or the target
  const Entry* overrides = nullptr;
  const Entry* overriddenBy = nullptr;
};

// In document order. Of entries with one key each overrides the one before. Where a load refuses them there are none,
// and a finding. Valid while the description is unchanged. REQUIRES: the description has no errors.
std::vector<Entry> entriesOf(Description& description);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_ENTRIES_H
