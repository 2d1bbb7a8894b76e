#include "document/error_reporter.h"

#include "text/lcp_text.h"

#include <iostream>

namespace jexxml {

void JexXmlErrorReporter::warning(const xercesc::SAXParseException&) {}

void JexXmlErrorReporter::error(const xercesc::SAXParseException& exception) { report("Error", exception); }

void JexXmlErrorReporter::fatalError(const xercesc::SAXParseException& exception) { report("Fatal Error", exception); }

void JexXmlErrorReporter::resetErrors() {}

void JexXmlErrorReporter::report(const char* severity, const xercesc::SAXParseException& exception) {
  sawErrors = true;
  const LcpText file(exception.getSystemId());
  const LcpText message(exception.getMessage());
  std::cerr << severity << " at file \"" << file << "\", line " << exception.getLineNumber() << ", column "
            << exception.getColumnNumber() << '\n'
            << "   Message: " << message << std::endl;
}

}  // namespace jexxml
