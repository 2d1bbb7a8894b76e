// Parses a document with the library's settings, and reports its errors.
#pragma once

#include "document/error_reporter.h"
#include "document/guard/document_parser.h"

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>

#include <memory>

namespace jexxml {

using xercesc::DOMNode;

// The parser of the running load, which owns the document, and its error reporter. Both are null outside a load.
extern std::unique_ptr<DocumentParser> gParser;
extern std::unique_ptr<JexXmlErrorReporter> gErrorReporter;

// Gives a parser the library's settings.
void configure(xercesc::XercesDOMParser& parser);

// Returns the document. If Xerces-C reports an error or throws, writes a diagnostic to the standard error stream and
// returns null. In both cases gParser and gErrorReporter are set afterwards. The caller resets them, gParser first.
//
// Reads nothing but the source: external entities and DTDs are fatal errors. A document that exceeds a budget or limit
// of document/guard/limits.h is a fatal error too. `size` is the size of the document in bytes; the budgets grow with
// it.
//
// REQUIRES: Xerces-C is started; gParser and gErrorReporter are null.
DOMNode* parseDocument(const xercesc::InputSource& source, std::size_t size = 0);

}  // namespace jexxml
