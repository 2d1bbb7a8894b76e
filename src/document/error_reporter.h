// JexXmlErrorReporter: writes the errors that Xerces-C finds in a document to the standard error stream.
#pragma once

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

namespace jexxml {

// For one parse. Writes each error and fatal error as two lines:
//
//   Error at file "JexXml", line 3, column 7          or   Fatal Error at file ...
//      Message: <Xerces-C's message>
class JexXmlErrorReporter final : public xercesc::ErrorHandler {
 public:
  // Ignores the warning.
  void warning(const xercesc::SAXParseException& exception) override;
  void error(const xercesc::SAXParseException& exception) override;
  void fatalError(const xercesc::SAXParseException& exception) override;

  // Xerces-C calls this at the start of a parse. It does not change `sawErrors`.
  void resetErrors() override;

  bool sawErrors = false;  // an error or a fatal error was reported

 private:
  void report(const char* severity, const xercesc::SAXParseException& exception);
};

}  // namespace jexxml
