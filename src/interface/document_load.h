// DocumentLoad: the steps of every load of a description file, and their tear-down.
//
//   start Xerces-C -> read the file -> parse it -> [the caller builds its tree and uses it]
//   -> delete parser and document, input source, error reporter -> stop Xerces-C
//
// The objects of a running load are global variables of the library, so only one load may run at a time.
#pragma once

#include "document/xerces_session.h"

#include <xercesc/dom/DOMNode.hpp>

#include <cstdint>

namespace jexxml {

using xercesc::DOMNode;

// The constructor runs the steps up to the document, and throws std::bad_alloc when out of memory. The destructor runs
// the tear-down. If the constructor throws after Xerces-C has started, the tear-down runs too. REQUIRES: everything
// that refers to the document is destroyed first.
class DocumentLoad {
 public:
  explicit DocumentLoad(const char* fileName);
  DocumentLoad(const DocumentLoad&) = delete;
  DocumentLoad& operator=(const DocumentLoad&) = delete;
  ~DocumentLoad();

  // Null if a step failed; the failure has been reported on the standard error stream. No tree is built over a null
  // document.
  DOMNode* document() const { return parsedDocument; }

  // What is left of the load's memory budget after the document, its tree and its record, in bytes.
  static std::uint64_t memoryLeft();

 private:
  DocumentLoad() = default;
  void run(const char* fileName);

  XercesSession library;
  DOMNode* parsedDocument = nullptr;
};

}  // namespace jexxml
