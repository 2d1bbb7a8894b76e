#include "document/guard/document_parser.h"

#include "document/guard/content_model_cost.h"
#include "document/guard/watched_source.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <algorithm>
#include <string_view>

namespace jexxml {

using xercesc::XMLAttDef;
using xercesc::XMLPlatformUtils;

namespace {

// The block of an entity's reader, of which there is one for each entity that is opened. Nothing else takes a
// block of this size, least of all a destructor: those take little, for lists of what is left to destroy.
const std::size_t entityReaderBlock =
    XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*)) + sizeof(xercesc::XMLReader);

bool declaresNamespace(std::u16string_view attributeName) {
  return attributeName == u"xmlns" || attributeName.starts_with(u"xmlns:");
}

}  // namespace

DocumentParser::DocumentParser(const Limit& size) : DocumentBuilder(nullptr, &memory, nullptr), sizeLimit(size) {
  constexpr XMLSize_t expansionLimit = 50'000;  // has the parser library's own message
  securityManager.setEntityExpansionLimit(expansionLimit);
  setSecurityManager(&securityManager);
  memory.beforeAllocation = [this](std::size_t bytes) { checkAllocation(bytes); };
}

DocumentParser::~DocumentParser() { memory.beforeAllocation = nullptr; }

void DocumentParser::parse(const xercesc::InputSource& source) {
  XercesDOMParser::parse(WatchedSource(source, memory, [this](std::size_t size) { checkReading(size); }));
}

void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                  const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount,
                                  bool isEmpty, bool isRoot) {
  checkpoint();
  hold(++depth, depthLimit);
  hold(attributeCount, attributeLimit);
  if (&declaration != lastElement) {
    lastElement = &declaration;
    elements.insert(lastElement);
    hold(elements.size(), elementNameLimit);
  }
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    checkAttribute(i, *attributes.elementAt(i));
  }
  DocumentBuilder::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void DocumentParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                const XMLCh* prefix) {
  --depth;
  DocumentBuilder::endElement(declaration, uriId, isRoot, prefix);
}

void DocumentParser::docCharacters(const XMLCh* /*text*/, XMLSize_t length, bool /*isCdata*/) { skipText(length); }

void DocumentParser::ignorableWhitespace(const XMLCh* /*text*/, XMLSize_t length, bool /*isCdata*/) {
  skipText(length);
}

void DocumentParser::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
  checkpoint();
  hold(++elementDeclarations, elementDeclarationLimit);
  contentModels += contentModelCost(declaration.getContentSpec());
  hold(contentModels, contentModelLimit);
  DocumentBuilder::elementDecl(declaration, isIgnored);
}

void DocumentParser::startAttList(const xercesc::DTDElementDecl& declaration) {
  checkpoint();
  hold(++elementDeclarations, elementDeclarationLimit);
  DocumentBuilder::startAttList(declaration);
}

void DocumentParser::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition,
                            bool isIgnored) {
  checkpoint();
  hold(element.getAttDefList().getAttDefCount(), attributeDeclarationLimit);
  hold(xercesc::XMLString::stringLen(definition.getEnumeration()), enumerationLimit);
  declaresLists |= definition.getType() == XMLAttDef::IDRefs || definition.getType() == XMLAttDef::Entities;
  DocumentBuilder::attDef(element, definition, isIgnored);
}

void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) {
  checkpoint();
  hold(++entities, entityLimit);
  longestEntity = std::max<std::size_t>(longestEntity, declaration.getValueLen());
  DocumentBuilder::entityDecl(declaration, isParameterEntity, isIgnored);
}

// In content, this says which entity was opened. In attributes nothing does.
void DocumentParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
  entityText -= (longestEntity - entity.getValueLen()) * sizeof(XMLCh);
  DocumentBuilder::startEntityReference(entity);
}

void DocumentParser::notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) {
  checkpoint();
  hold(++entities, entityLimit);
  DocumentBuilder::notationDecl(declaration, isIgnored);
}

void DocumentParser::error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
                           const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) {
  checkpoint();
  if (type != ErrType_Warning) {  // nobody sees those
    hold(++errors, errorLimit);
    errorText += xercesc::XMLString::stringLen(text);
    hold(errorText, errorTextLimit);
  }
  DocumentBuilder::error(code, domain, type, text, systemId, publicId, line, column);
}

void DocumentParser::checkpoint() {
  checkMemory();
  blocksAtCheckpoint = memory.blocks;
  charactersSinceCheckpoint = 0;
}

// Text that is not kept takes no memory, but time to read, so it counts all the same.
void DocumentParser::checkMemory() {
  if (memory.reserveUsed && !refused) {
    refused = true;
    throw xercesc::OutOfMemoryException();
  }
  hold(std::uint64_t{memory.mostBytes} + skippedText, sizeLimit);
}

void DocumentParser::checkAllocation(std::size_t size) {
  if (size == entityReaderBlock) {
    checkReading(longestEntity);
    blocksAtCheckpoint = memory.blocks;
    entityText += longestEntity * sizeof(XMLCh) + entityCost;
    hold(entityText, sizeLimit);
  }
}

// In the middle of a tag or declaration.
void DocumentParser::checkReading(std::size_t size) {
  checkMemory();
  hold(memory.blocks - blocksAtCheckpoint, markupLimit);
  if (declaresLists) {
    charactersSinceCheckpoint += size;
    hold(charactersSinceCheckpoint, listLimit);
  }
}

// Elements of one kind mostly have the same attributes at the same places, which costs one comparison.
void DocumentParser::checkAttribute(std::size_t place, const xercesc::XMLAttr& attribute) {
  if (place >= lastNames.size()) {
    lastNames.resize(place + 1);
  }
  LastName& last = lastNames[place];
  const XMLCh* name = attribute.getQName();
  if (!xercesc::XMLString::equals(last.name.c_str(), name)) {
    last = {.name = name, .isNamespace = declaresNamespace(name)};
    attributeNames.insert(last.name);
    hold(attributeNames.size(), attributeNameLimit);
  }
  if (last.isNamespace) {
    hold(++namespaces, namespaceLimit);
  }
  if (attribute.getType() >= XMLAttDef::ID && attribute.getType() <= XMLAttDef::Entities) {
    const std::u16string_view value = attribute.getValue();
    identifiers += 1 + static_cast<std::size_t>(std::ranges::count(value, u' '));
    hold(identifiers, identifierLimit);
  }
}

void DocumentParser::skipText(std::size_t length) {
  skippedText += length * sizeof(XMLCh);
  checkpoint();
}

// After a refusal nothing is held any more, so that the parser library can clean up.
void DocumentParser::hold(std::uint64_t count, const Limit& limit) {
  if (count > limit.most && !refused) {
    refused = true;
    getErrorHandler()->fatalError(xercesc::SAXParseException(limit.message, *getScanner()->getLocator()));
    throw DocumentRefused();
  }
}

}  // namespace jexxml
