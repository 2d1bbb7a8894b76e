#include "interface/document_load.h"

#include "xml/lcp_text.h"
#include "xml/parse_document.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <iostream>

namespace jexxml {

using xercesc::MemBufInputSource;
using xercesc::XMLPlatformUtils;

KIVByteArray gByteArray;
std::unique_ptr<MemBufInputSource> gInputSource;

namespace {

bool startParserLibrary() {
  try {
    XMLPlatformUtils::Initialize();
    return true;
  } catch (const xercesc::XMLException& exception) {
    std::cerr << "Error during Xerces-c Initialization.\n"
              << "  Exception message:" << LcpText(exception.getMessage()) << std::endl;
    return false;
  }
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
  if (!startParserLibrary()) {
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
  XMLPlatformUtils::Terminate();
}

}  // namespace jexxml
