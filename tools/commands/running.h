// Running a command, and running it for each file.
#pragma once

#include "commands/command_line.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Runs the command for each file, even after one has failed, then finishOutput(). Reports Failure and std::bad_alloc.
// Returns the worst status. Shows the progress of long work.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

// Runs the command with Xerces-C started, and with its output in place, which must not be one of the files. Texts are
// in the locale encoding; JSON is in UTF-8, which the library uses in the "C" locale.
ExitStatus runWithParser(const Options& options, ExitStatus (*command)(const Options&));

template <ExitStatus (*command)(const Options&)>
ExitStatus withParser(const Options& options) {
  return runWithParser(options, command);
}

}  // namespace tool
