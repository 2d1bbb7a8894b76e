#include "commands/run_with_parser.h"

#include "document/parser_library.h"
#include "io/printed_output.h"

#include <clocale>

namespace tool {
ExitStatus runWithParser(const std::string& output, const std::vector<std::string>& inputs, bool asJson,
                         const std::function<ExitStatus()>& command) {
  if (!asJson) {
    std::setlocale(LC_CTYPE, "");
  }
  const jexxml::ParserLibrary started;  // over many loads: a start takes longer than a small file
  return printTo(output, inputs, command);
}

}  // namespace tool
