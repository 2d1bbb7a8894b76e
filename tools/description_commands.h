// The commands that read description files.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H
#define QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H

#include "outcome.h"

#include <string>
#include <vector>

namespace tool {

enum class Format { table, json, tree };

// Prints each file's record; files that do not load are reported, and the others still done.
ExitStatus showManifests(const std::vector<std::string>& files, Format format);

// Checks each file; with `tree`, prints its dump.
ExitStatus checkProjects(const std::vector<std::string>& files, bool tree);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H
