// The entries of a description: what a load puts into its record.
#pragma once

#include "description/description.h"

#include <string>
#include <vector>

namespace tool {

struct Entry {
  enum class Kind { rootMacro, file, searchPath };

  bool isFile() const { return kind == Kind::file; }

  const Element* element;
  Kind kind;
  std::string key;                   // the macro's name, the source, or the path
  std::string value;                 // the macro's path, or the target
  const Entry* overrides = nullptr;  // the previous one with the same key; not for search paths
  const Entry* overriddenBy = nullptr;
  const Entry* sameTarget = nullptr;  // a previous file; neither of them is overridden
};

// In document order. Empty, with an error added, if a load fails. REQUIRES: the description stays unchanged.
std::vector<Entry> entriesOf(Description& description);

}  // namespace tool
