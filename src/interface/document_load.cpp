#include "interface/document_load.h"

#include "document/parse_document.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <iostream>
#include <memory>
#include <new>

namespace jexxml {

using xercesc::MemBufInputSource;
using xercesc::XMLPlatformUtils;

// The bytes of the last file that was read, until the library is unloaded.
static KIVByteArray gByteArray;

// The input source of the running load, over gByteArray. Null outside a load.
static std::unique_ptr<MemBufInputSource> gInputSource;

// Reads the file into gByteArray and returns an input source over it. Null if the file cannot be read.
static std::unique_ptr<MemBufInputSource> makeInputSource(const char* fileName) {
  if (!ReadXmlFile(fileName, gByteArray)) {
    return nullptr;
  }
  constexpr const char* bufferId = "JexXml";  // names the document in every report
  constexpr bool adoptBuffer = false;
  xercesc::MemoryManager* manager = XMLPlatformUtils::fgMemoryManager;
  std::unique_ptr<MemBufInputSource> source(new (manager) MemBufInputSource(
      reinterpret_cast<const XMLByte*>(gByteArray.data), gByteArray.length, bufferId, adoptBuffer, manager));
  source->setCopyBufToStream(false);  // the bytes outlive the parse
  return source;
}

// After the delegated constructor the object is complete, so the destructor runs even if run() throws.
DocumentLoad::DocumentLoad(const char* fileName) : DocumentLoad() {
  try {
    run(fileName);
  } catch (const xercesc::OutOfMemoryException&) {  // not a std::exception
    throw std::bad_alloc();
  }
}

void DocumentLoad::run(const char* fileName) {
  if (library.failure()) {
    std::cerr << "Error during Xerces-c Initialization." << '\n'
              << "  Exception message:" << *library.failure() << std::endl;
    return;
  }
  gInputSource = makeInputSource(fileName);
  if (gInputSource == nullptr) {
    std::cerr << "Error building input source" << std::endl;
    return;
  }
  parsedDocument = parseDocument(*gInputSource, gByteArray.length);
  if (parsedDocument == nullptr) {
    std::cerr << "Error buiding DOM" << std::endl;
  }
}

DocumentLoad::~DocumentLoad() {
  gParser.reset();
  gInputSource.reset();
  gErrorReporter.reset();
}

std::uint64_t DocumentLoad::memoryLeft() { return gParser == nullptr ? 0 : gParser->memoryLeft(); }

}  // namespace jexxml
