#include "commands/run_with_parser.h"

#include "document/parser_library.h"
#include "io/printed_output.h"

#include <xercesc/util/XMLException.hpp>

#include <clocale>

namespace tool {
namespace {

// Keeps Xerces-C started over many loads, which takes longer than a small file. Where it does not start, the
// loads say so. Throws std::bad_alloc.
class ParserLibrary {
 public:
  ParserLibrary() {
    try {
      jexxml::initializeParserLibrary();
      isStarted = true;
    } catch (const xercesc::XMLException&) {
    }
  }
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;
  ~ParserLibrary() {
    if (isStarted) {
      jexxml::terminateParserLibrary();
    }
  }

 private:
  bool isStarted = false;
};

}  // namespace

ExitStatus runWithParser(const std::string& output, const std::vector<std::string>& inputs, bool asJson,
                         const std::function<ExitStatus()>& command) {
  if (!asJson) {
    std::setlocale(LC_CTYPE, "");
  }
  const jexxml::ParserLibrary started;
  return printTo(output, inputs, command);
}

}  // namespace tool
