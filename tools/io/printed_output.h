// Where what a command prints goes.
#ifndef QZJEXXML_TOOLS_IO_PRINTED_OUTPUT_H
#define QZJEXXML_TOOLS_IO_PRINTED_OUTPUT_H

#include "io/exit_status.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Flushes what was printed; what could not be written makes `status` fileFailed, after a report.
ExitStatus finishOutput(ExitStatus status);

// Runs the command with what it prints in `file`, which is written wholly or not at all; on the standard output if
// `file` is empty or "-". Throws Failure when the file is one of the inputs, or a description.
ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_PRINTED_OUTPUT_H
