#include "interface/document_load.h"

#include "document/parse_document.h"
#include "document/parser_library.h"
#include "text/lcp_text.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <cstddef>
#include <iostream>
#include <memory>
#include <new>

namespace jexxml {

using xercesc::MemBufInputSource;
using xercesc::XMLPlatformUtils;

namespace {

// The file of the load, and between loads the last file that was read, until the library is unloaded.
KIVByteArray gByteArray;

// The running load's input source over those bytes; null outside a load.
std::unique_ptr<MemBufInputSource> gInputSource;

// False after a report, when the parser library says why it does not start.
bool startParserLibrary() {
  try {
    initializeParserLibrary();
  } catch (const xercesc::XMLException& exception) {
    std::cerr << "Error during Xerces-c Initialization." << '\n'
              << "  Exception message:" << LcpText(exception.getMessage()) << std::endl;
    return false;
  }
  return true;
}

// An input source over the file's bytes in gByteArray, or null when it cannot be read.
std::unique_ptr<MemBufInputSource> makeInputSource(const char* fileName) {
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

}  // namespace

// The delegation completes the object first, so that its destructor runs whatever is thrown here.
DocumentLoad::DocumentLoad(const char* fileName) : DocumentLoad() {
  try {
    run(fileName);
  } catch (const xercesc::OutOfMemoryException&) {  // which is no std::exception
    throw std::bad_alloc();
  }
}

void DocumentLoad::run(const char* fileName) {
  if (!startParserLibrary()) {
    return;
  }
  gInputSource = makeInputSource(fileName);
  if (gInputSource == nullptr) {
    std::cerr << "Error building input source" << std::endl;
    return;
  }
  size = gByteArray.length;
  parsedDocument = parseDocument(*gInputSource, size);
  if (parsedDocument == nullptr) {
    std::cerr << "Error buiding DOM" << std::endl;
  }
}

DocumentLoad::~DocumentLoad() { tearDown(); }

void DocumentLoad::tearDown() {
  gParser.reset();
  gInputSource.reset();
  gErrorReporter.reset();
  terminateParserLibrary();
}

}  // namespace jexxml
