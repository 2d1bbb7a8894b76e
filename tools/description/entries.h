// The entries of a description: root macros, files and search paths.
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
  const Entry* overrides = nullptr;  // previous entry with the same key; null for search paths
  const Entry* overriddenBy = nullptr;
  const Entry* sameTarget = nullptr;  // a previous file with the same target; neither is overridden
};

// Returns the entries in document order; none, after adding an error, if a load fails. Valid while the elements are.
std::vector<Entry> entriesOf(Description& description);

}  // namespace tool
