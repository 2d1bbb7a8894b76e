// DocumentLoad: the sequence that every load of a description file runs, and its tear-down.
//
//   start the parser library -> read the file -> parse it -> [the caller builds its tree and uses it]
//   -> delete parser and document, input source, error reporter -> stop the parser library
//
// The objects of a running load stand in library-global slots (gInputSource here, gParser and
// gErrorReporter in xml/parse_document.h), so only one load may run at a time.
#ifndef QZJEXXML_INTERFACE_DOCUMENT_LOAD_H
#define QZJEXXML_INTERFACE_DOCUMENT_LOAD_H

#include <qzjexxml/kiv_byte_array.h>

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>

#include <memory>

namespace jexxml {

using xercesc::DOMNode;

// The file of the load, and between loads the last file that was read, until the library is unloaded.
extern KIVByteArray gByteArray;

// The running load's input source over those bytes; null outside a load.
extern std::unique_ptr<xercesc::MemBufInputSource> gInputSource;

// Runs the sequence up to the document when constructed, and the tear-down when destroyed, also when
// an exception passes through the constructor. Throws std::bad_alloc, also for the parser library. Whatever refers to
// the document dies before this object.
class DocumentLoad {
 public:
  explicit DocumentLoad(const char* fileName);
  DocumentLoad(const DocumentLoad&) = delete;
  DocumentLoad& operator=(const DocumentLoad&) = delete;
  ~DocumentLoad();

  // Null when a step failed, which has then been reported on the standard error stream. No tree is built
  // over a null document.
  DOMNode* document() const { return parsedDocument; }

  // The size of the load's file in bytes.
  static std::size_t documentSize();

 private:
  DocumentLoad() = default;
  void run(const char* fileName);

  DOMNode* parsedDocument = nullptr;
};

}  // namespace jexxml

#endif  // QZJEXXML_INTERFACE_DOCUMENT_LOAD_H
