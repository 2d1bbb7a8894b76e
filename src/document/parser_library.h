// Starting and stopping the parser library, also where there is no memory for it.
#ifndef QZJEXXML_DOCUMENT_PARSER_LIBRARY_H
#define QZJEXXML_DOCUMENT_PARSER_LIBRARY_H

namespace jexxml {

// Counts, as the parser library does: each start has its stop. A start that runs out of memory leaves the parser
// library half started. Then it can be neither started nor stopped any more, and every later start throws
// std::bad_alloc; so does one that would not have a mebibyte, and is not begun. Throws xercesc::XMLException when the
// parser library says why it does not start.
void initializeParserLibrary();

// Does nothing where the parser library is half started.
void terminateParserLibrary() noexcept;

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_PARSER_LIBRARY_H
