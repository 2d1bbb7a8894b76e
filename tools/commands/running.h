// Running a command, and over files.
#pragma once

#include "commands/command_line.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Runs the command for each file, whatever becomes of the others, then finishOutput; a Failure and
// std::bad_alloc are reported. Returns the worst outcome. Of long work, a terminal on the standard error stream shows
// how far it is.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

// Runs the command with Xerces-C started, and with what it prints in the output, which is none of the files.
// Texts come in the locale encoding; for JSON in UTF-8, which the library gives in the "C" locale.
ExitStatus runWithParser(const Options& options, ExitStatus (*command)(const Options&));

template <ExitStatus (*command)(const Options&)>
ExitStatus withParser(const Options& options) {
  return runWithParser(options, command);
}

}  // namespace tool
