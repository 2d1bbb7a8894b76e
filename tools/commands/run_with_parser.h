// What the commands have in common that say something of descriptions.
#ifndef QZJEXXML_TOOLS_COMMANDS_RUN_WITH_PARSER_H
#define QZJEXXML_TOOLS_COMMANDS_RUN_WITH_PARSER_H

#include "io/exit_status.h"

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Runs the command with Xerces-C started, and with what it prints in `output`, which is none of the inputs.
// Texts come in the locale encoding; for JSON in UTF-8, which the library gives in the "C" locale.
ExitStatus runWithParser(const std::string& output, const std::vector<std::string>& inputs, bool asJson,
                         const std::function<ExitStatus()>& command);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_RUN_WITH_PARSER_H
