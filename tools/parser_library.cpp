#include "parser_library.h"

#include "document/parser_library.h"

#include <xercesc/util/XMLException.hpp>

namespace tool {

ParserLibrary::ParserLibrary() {
  try {
    jexxml::initializeParserLibrary();
    started = true;
  } catch (const xercesc::XMLException&) {
  }
}

ParserLibrary::~ParserLibrary() {
  if (started) {
    jexxml::terminateParserLibrary();
  }
}

}  // namespace tool
