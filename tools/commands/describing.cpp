#include "commands/describing.h"

#include "document/parser_library.h"
#include "io/printed_output.h"

#include <clocale>

namespace tool {

ExitStatus describe(const std::string& output, const std::vector<std::string>& inputs, bool asJson,
                    const std::function<ExitStatus()>& command) {
  if (!asJson) {
    std::setlocale(LC_CTYPE, "");
  }
  const jexxml::ParserLibrary started;
  return printTo(output, inputs, command);
}

}  // namespace tool
