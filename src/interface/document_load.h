// DocumentLoad: the sequence that every load of a description file runs, and its tear-down.
//
//   start the parser library -> read the file -> parse it -> [the caller builds its tree and uses it]
//   -> delete parser and document, input source, error reporter -> stop the parser library
//
// The objects of a running load are library-global, so only one load may run at a time.
#ifndef QZJEXXML_INTERFACE_DOCUMENT_LOAD_H
#define QZJEXXML_INTERFACE_DOCUMENT_LOAD_H

#include <xercesc/dom/DOMNode.hpp>

#include <cstdint>

namespace jexxml {

using xercesc::DOMNode;

// Its constructor runs the sequence up to the document, its destructor the tear-down, also when an exception leaves
// the constructor. REQUIRES: whatever refers to the document is destroyed before. Throws std::bad_alloc, also where
// the parser library has an exception of its own for out of memory.
class DocumentLoad {
 public:
  explicit DocumentLoad(const char* fileName);
  DocumentLoad(const DocumentLoad&) = delete;
  DocumentLoad& operator=(const DocumentLoad&) = delete;
  ~DocumentLoad();

  // Null when a step failed, which has then been reported on the standard error stream. No tree is built over a null
  // document.
  DOMNode* document() const { return parsedDocument; }

  // The size of the file in bytes; 0 when it could not be read.
  std::uint32_t fileSize() const { return size; }

 private:
  DocumentLoad() = default;
  void run(const char* fileName);
  static void tearDown();

  DOMNode* parsedDocument = nullptr;
  std::uint32_t size = 0;
};

}  // namespace jexxml

#endif  // QZJEXXML_INTERFACE_DOCUMENT_LOAD_H
