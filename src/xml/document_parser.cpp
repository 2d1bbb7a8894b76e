#include "xml/document_parser.h"

#include <string_view>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/XMLString.hpp>

namespace jexxml {

using xercesc::XMLPlatformUtils;

namespace {

// A document object model takes about 17 times the file; entities make that more.
constexpr std::size_t memoryForAnyDocument = std::size_t{32} << 20U;
constexpr std::size_t memoryForEachByte = 64;

// The parser library makes one of these for each entity that it opens, and little else as large.
constexpr std::size_t entityReaderSize = sizeof(xercesc::XMLReader);

}  // namespace

void* CountedMemory::allocate(XMLSize_t size) {
  if (beforeAllocation) {
    beforeAllocation(size);
  }
  auto* block = static_cast<Block*>(XMLPlatformUtils::fgMemoryManager->allocate(sizeof(Block) + size));
  *block = {.previous = lastBlock, .next = nullptr, .size = size};
  if (lastBlock != nullptr) {
    lastBlock->next = block;
  }
  lastBlock = block;
  bytesInUse += size;
  return block + 1;
}

void CountedMemory::deallocate(void* memory) {
  if (memory == nullptr) {
    return;
  }
  Block* block = static_cast<Block*>(memory) - 1;
  if (block->previous != nullptr) {
    block->previous->next = block->next;
  }
  (block->next != nullptr ? block->next->previous : lastBlock) = block->previous;
  bytesInUse -= block->size;
  XMLPlatformUtils::fgMemoryManager->deallocate(block);
}

CountedMemory::~CountedMemory() {
  while (lastBlock != nullptr) {
    deallocate(lastBlock + 1);
  }
}

xercesc::MemoryManager* CountedMemory::getExceptionMemoryManager() { return XMLPlatformUtils::fgMemoryManager; }

DocumentParser::DocumentParser(std::size_t documentSize)
    : XercesDOMParser(nullptr, &memory, nullptr), memoryLimit(memoryForAnyDocument + memoryForEachByte * documentSize) {
  securityManager.setEntityExpansionLimit(maximumExpansions);
  setSecurityManager(&securityManager);
  memory.beforeAllocation = [this](std::size_t size) { checkAllocation(size); };
}

DocumentParser::~DocumentParser() { memory.beforeAllocation = nullptr; }

void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                  const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount,
                                  bool isEmpty, bool isRoot) {
  if (++depth > maximumDepth) {
    refuse(u"the document nests elements deeper than 1,000");
  }
  if (attributeCount > maximumAttributes) {
    refuse(u"an element has more than 1,000 attributes");
  }
  if (declaration.getId() > maximumNames) {
    refuse(u"the document has more than 10,000 different element names");
  }
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    checkAttributeName(i, attributes.elementAt(i)->getQName());
  }
  XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void DocumentParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                const XMLCh* prefix) {
  --depth;
  XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
}

void DocumentParser::docCharacters(const XMLCh* /*text*/, XMLSize_t length, bool /*isCdata*/) { skipText(length); }

void DocumentParser::ignorableWhitespace(const XMLCh* /*text*/, XMLSize_t length, bool /*isCdata*/) {
  skipText(length);
}

void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) {
  countDeclaration();
  XercesDOMParser::entityDecl(declaration, isParameterEntity, isIgnored);
}

void DocumentParser::notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) {
  countDeclaration();
  XercesDOMParser::notationDecl(declaration, isIgnored);
}

// Elements of one kind mostly have the same attributes at the same places, which costs one comparison.
void DocumentParser::checkAttributeName(std::size_t place, const XMLCh* name) {
  constexpr std::u16string_view namespaceDeclaration = u"xmlns";
  if (place >= lastNames.size()) {
    lastNames.resize(place + 1);
  }
  std::u16string& lastName = lastNames[place];
  if (!xercesc::XMLString::equals(lastName.c_str(), name)) {
    lastName = name;
    attributeNames.insert(lastName);
    if (attributeNames.size() > maximumNames) {
      refuse(u"the document has more than 10,000 different attribute names");
    }
  }
  if (lastName.starts_with(namespaceDeclaration) && ++namespaces > maximumNamespaces) {
    refuse(u"the document declares more than 10,000 namespaces");
  }
}

void DocumentParser::countDeclaration() {
  if (++declarations > maximumDeclarations) {
    refuse(u"the document declares more than 10,000 entities and notations");
  }
}

void DocumentParser::checkAllocation(std::size_t size) {
  if (refused) {
    return;
  }
  if (size >= entityReaderSize && ++entitiesOpened > maximumEntitiesOpened) {
    refuse(u"the document expands more than 60,000 entities");
  }
  checkSize(size);
}

// Text that is not kept takes no memory, but time to read, so it counts all the same.
void DocumentParser::skipText(std::size_t length) {
  skippedText += length * sizeof(XMLCh);
  checkSize(0);
}

void DocumentParser::checkSize(std::size_t growth) {
  if (memory.bytesInUse + skippedText + growth > memoryLimit) {
    refuse(u"the document expands to far more than its size");
  }
}

void DocumentParser::refuse(const char16_t* message) {
  refused = true;
  getErrorHandler()->fatalError(xercesc::SAXParseException(message, *getScanner()->getLocator()));
  throw DocumentRefused();
}

}  // namespace jexxml
