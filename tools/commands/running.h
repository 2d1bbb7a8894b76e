// Running a command, and running it for each file.
#pragma once

#include "commands/command_line.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Runs the command for each file, even after a file has failed, then finishOutput(). Reports Failure and
// std::bad_alloc. Returns the worst status. Shows the progress of long work.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

// Starts Xerces-C, redirects std::cout to the output, which must not be one of the files, and runs the command. Texts
// are in the locale encoding. For JSON the locale stays "C", in which the library writes UTF-8.
ExitStatus runWithParser(const Options& options, ExitStatus (*command)(const Options&));

template <ExitStatus (*command)(const Options&)>
ExitStatus withParser(const Options& options) {
  return runWithParser(options, command);
}

}  // namespace tool
