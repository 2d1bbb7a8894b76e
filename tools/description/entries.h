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
  const Entry* overrides = nullptr;  // the one before with the same key; a search path overrides none
  const Entry* overriddenBy = nullptr;
  const Entry* sameTarget = nullptr;  // a file before, neither of which is overridden
};

// Returns them in document order. A description that does not load has none, and an error. Valid while the description
// is unchanged.
std::vector<Entry> entriesOf(Description& description);

}  // namespace tool
