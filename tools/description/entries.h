// The entries of a description: what a load puts into its record.
#pragma once

#include "description/description.h"

#include <string>
#include <vector>

namespace tool {

// Of either kind of description.
struct Entry {
  enum class Kind { rootMacro, file, searchPath };

  bool counts() const { return overriddenBy == nullptr; }
  bool isFile() const { return kind == Kind::file; }

  const Element* element;
  Kind kind;
  std::string key;    // the macro's name, the source, or the path
  std::string value;  // the macro's path, or the target
  const Entry* overrides = nullptr;
  const Entry* overriddenBy = nullptr;
};

// In document order. Of root macros or files with one key each overrides the one before. A description that does not
// load has none, and an error. Valid while the description is unchanged.
std::vector<Entry> entriesOf(Description& description);

}  // namespace tool
