// DocumentLoad: the sequence that every load of a description file runs, and its tear-down.
//
//   start Xerces-C -> read the file -> parse it -> [the caller builds its tree and uses it]
//   -> delete parser and document, input source, error reporter -> stop Xerces-C
//
// The objects of a running load are library-global, so only one load may run at a time.
#pragma once

#include "document/parser_library.h"

#include <xercesc/dom/DOMNode.hpp>

#include <cstdint>

namespace jexxml {

using xercesc::DOMNode;

// Its constructor runs the sequence up to the document, its destructor the tear-down, also when an exception leaves
// the constructor after Xerces-C's start. REQUIRES: whatever refers to the document is destroyed before. Throws
// std::bad_alloc, also where Xerces-C has an exception of its own for out of memory.
class DocumentLoad {
 public:
  explicit DocumentLoad(const char* fileName);
  DocumentLoad(const DocumentLoad&) = delete;
  DocumentLoad& operator=(const DocumentLoad&) = delete;
  ~DocumentLoad();

  // Null when a step failed, which has then been reported on the standard error stream. No tree is built over a null
  // document.
  DOMNode* document() const { return parsedDocument; }

  // What the document leaves of the memory that a load may take, in bytes, with its tree counted.
  static std::uint64_t memoryLeft();

 private:
  DocumentLoad() = default;
  void run(const char* fileName);

  ParserLibrary library;
  DOMNode* parsedDocument = nullptr;
};

}  // namespace jexxml
