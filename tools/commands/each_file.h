// Running a command over files.
#ifndef QZJEXXML_TOOLS_COMMANDS_EACH_FILE_H
#define QZJEXXML_TOOLS_COMMANDS_EACH_FILE_H

#include "io/exit_status.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Runs the command for each file, whatever becomes of the others, then finishOutput; a Failure and
// std::bad_alloc are reported. Returns the worst outcome. Of long work, a terminal on the standard error stream shows
// how far it is.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_EACH_FILE_H
