// Checking descriptions: what keeps one from loading, and what a load would silently ignore or override.
#ifndef QZJEXXML_TOOLS_CHECK_COMMAND_H
#define QZJEXXML_TOOLS_CHECK_COMMAND_H

#include "outcome.h"

#include <string>
#include <vector>

namespace tool {

// Prints for each finding of each file a line "FILE:LINE:COLUMN: error: TEXT" or "... warning: TEXT", or for each file
// one JSON object on a line. fileFailed when there is a finding.
ExitStatus checkFiles(const std::vector<std::string>& files, bool asJson);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_CHECK_COMMAND_H
