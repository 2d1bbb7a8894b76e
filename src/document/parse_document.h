// Parsing an in-memory document into a DOM, with the library's settings and its error reports.
#pragma once

#include "document/error_reporter.h"
#include "document/guard/document_parser.h"

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/InputSource.hpp>

#include <memory>

namespace jexxml {

using xercesc::DOMNode;

// The parser, which owns the document, and the reporter of the running load; both null outside a load.
extern std::unique_ptr<DocumentParser> gParser;
extern std::unique_ptr<JexXmlErrorReporter> gErrorReporter;

// Gives a parser the library's settings.
void configure(xercesc::XercesDOMParser& parser);

// Returns the parsed document, or null when the parser reported an error, threw or has none; all but
// the last have been written to the standard error stream. Whatever the result, the new parser and
// reporter stand in the slots above; whoever empties them takes the parser first.
//
// Nothing outside the source is read: external entities and DTDs are fatal errors, and so is a document
// that goes over a budget or limit of document/guard/limits.h. `size` is the document's size in bytes; 0 allows what
// every document may take.
//
// REQUIRES: the parser library is started, and the slots are empty.
DOMNode* parseDocument(const xercesc::InputSource& source, std::size_t size = 0);

}  // namespace jexxml
