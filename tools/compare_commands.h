// What differs between two manifests, and where an entry of a description comes from.
#ifndef QZJEXXML_TOOLS_COMPARE_COMMANDS_H
#define QZJEXXML_TOOLS_COMPARE_COMMANDS_H

#include "outcome.h"

#include <string>

namespace tool {

// Prints a line for each entry that was added (+) or removed (-), or has another target or value (!). Returns
// differ when there is one, and wrongUsage, as diff(1) does, when a file does not load.
ExitStatus diffManifests(const std::string& oldFile, const std::string& newFile);

// Prints where the entries stand that set a file (by its source or target) or a root macro (by its name), how they are
// composed, and which of them override which.
ExitStatus explainEntry(const std::string& file, const std::string& key);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMPARE_COMMANDS_H
