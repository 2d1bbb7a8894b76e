#include "document/parse_document.h"

#include "text/lcp_text.h"

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <iostream>

namespace jexxml {

using xercesc::XercesDOMParser;

std::unique_ptr<DocumentParser> gParser;
std::unique_ptr<JexXmlErrorReporter> gErrorReporter;

void configure(XercesDOMParser& parser) {
  parser.setValidationScheme(XercesDOMParser::Val_Auto);  // by the document's own DTD, if it has one
  parser.setDoNamespaces(true);
  parser.setDoSchema(false);
  parser.setValidationSchemaFullChecking(false);
  parser.setCreateEntityReferenceNodes(true);

  parser.setDisableDefaultEntityResolution(true);
}

DOMNode* parseDocument(const xercesc::InputSource& source, std::size_t size) {
  gParser = std::make_unique<DocumentParser>(Budgets(size));
  DocumentParser& parser = *gParser;
  configure(parser);
  gErrorReporter = std::make_unique<JexXmlErrorReporter>();
  parser.setErrorHandler(gErrorReporter.get());
  try {
    parser.parse(source);
  } catch (const DocumentRefused&) {
    return nullptr;
  } catch (const xercesc::XMLException& exception) {
    std::cerr << "An error occurred during parsing" << '\n'
              << "   Message: " << LcpText(exception.getMessage()) << std::endl;
    return nullptr;
  } catch (const xercesc::DOMException& exception) {
    std::cerr << "A DOM error occurred during parsing" << '\n'
              << "   DOMException code: " << exception.code << std::endl;
    return nullptr;
  } catch (...) {
    std::cerr << "An error occurred during parsing" << '\n' << ' ' << std::endl;
    return nullptr;
  }
  return gErrorReporter->sawErrors ? nullptr : parser.document();
}

}  // namespace jexxml
