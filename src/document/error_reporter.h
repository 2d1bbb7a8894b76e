// JexXmlErrorReporter: what the parser finds wrong in a document, as lines on the standard error stream.
#pragma once

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

namespace jexxml {

// Serves one parse. Each error and fatal error is written as two lines:
//
//   Error at file "JexXml", line 3, column 7          or   Fatal Error at file ...
//      Message: <the parser's message>
class JexXmlErrorReporter final : public xercesc::ErrorHandler {
 public:
  // Warnings are neither written nor counted.
  void warning(const xercesc::SAXParseException& exception) override;
  void error(const xercesc::SAXParseException& exception) override;
  void fatalError(const xercesc::SAXParseException& exception) override;

  // The parser calls this at the start of a parse; `sawErrors` stays as it is.
  void resetErrors() override;

  bool sawErrors = false;  // an error or a fatal error was reported

 private:
  void report(const char* severity, const xercesc::SAXParseException& exception);
};

}  // namespace jexxml
