#include "document/guard/document_parser.h"

#include "document/guard/watched_source.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace jexxml {

using xercesc::XMLAttDef;
using xercesc::XMLString;

constexpr std::uint64_t readingSteps = 32;  // to read and copy a character

static bool declaresNamespace(const XMLCh* name) {
  return *name == u'x' && std::u16string_view(name).starts_with(u"xmlns");
}

// Whether the value or the name of the attribute is looked up in a hash table for every tag that has the attribute.
static bool isLookedUp(const xercesc::XMLAttr& attribute) {
  return attribute.getType() != XMLAttDef::CData || *attribute.getPrefix() != 0 ||
         declaresNamespace(attribute.getQName());
}

// Returns the number of nodes of a content model, and the steps to build its automaton. A row of the automaton is a set
// of positions in the model at which the last name may stand. A name at k positions can therefore make 2^k rows, as in
// (a|b)*,a,(a|b),(a|b). A row has a cell for each name, and is compared with the other rows in its bucket. Mixed
// content has no automaton.
static std::pair<std::uint64_t, std::uint64_t> costOfModel(const xercesc::DTDElementDecl& declaration) {
  constexpr std::uint64_t farTooManyRows = std::uint64_t{1} << 30U;
  std::uint64_t nodes = 0;
  std::uint64_t names = 0;
  std::map<std::u16string_view, std::uint64_t> rowsOfName;
  // No recursion: a model of many names is as deep as it is long.
  std::vector<const xercesc::ContentSpecNode*> toVisit = {declaration.getContentSpec()};
  while (!toVisit.empty()) {
    const xercesc::ContentSpecNode* node = toVisit.back();
    toVisit.pop_back();
    if (node != nullptr) {
      ++nodes;
      if (node->getElement() != nullptr) {
        ++names;
        std::uint64_t& rows = rowsOfName[node->getElement()->getRawName()];
        rows = std::min(2 * rows + 1, farTooManyRows);
      }
      toVisit.insert(toVisit.end(), {node->getFirst(), node->getSecond()});
    }
  }
  std::uint64_t rows = 1;
  for (const auto& [name, rowsOfOne] : rowsOfName) {
    rows = std::min(rows + rowsOfOne, farTooManyRows);
  }
  const bool hasAutomaton = declaration.getModelType() == xercesc::DTDElementDecl::Children;
  const std::uint64_t stepsForACell = 64 + names / 4;
  return {nodes, hasAutomaton ? rows * (4 + names) * stepsForACell + rows * rows / 8 : 0};
}

DocumentParser::DocumentParser(const Budgets& given) : DocumentBuilder(nullptr, &memory, nullptr), budgets(given) {
  memory.beforeReader = [this] { openEntity(); };
}

void DocumentParser::parse(const xercesc::InputSource& source) {
  DocumentBuilder::parse(WatchedSource(source, &memory, [this](XMLSize_t bytes) { read(bytes); }));
  check();
}

// The steps to read a character and to look it up. Each name in a hash table has about six candidates. More than 16,384
// candidates exceed the processor's cache.
std::uint64_t DocumentParser::price() const {
  constexpr std::uint64_t cached = 16'384;
  return readingSteps + memory.candidates * (cached + memory.candidates) / cached / 6 + mostInScope / 3 +
         longestEnumeration;
}

void DocumentParser::read(std::uint64_t count) {
  if (inDtd) {
    enforce(charactersRead, dtdLimit);
  }
  charactersRead += count;
  work += count * price();
  check();
}

// Called before the reader of an entity is allocated. The entity is unknown here, so the charge is for the longest one.
void DocumentParser::openEntity() {
  constexpr std::uint64_t readerSteps = 24'000;  // it has buffers of 160 KiB, which may be new from the system
  enforce(getScanner()->getReaderMgr()->getReaderDepth(), entityLimit);
  work += readerSteps;
  read(longestEntity);
}

// For each tag, Xerces-C visits all definitions of the element's attributes three times. It looks up a default
// xmlns attribute even if the tag has its own. It looks up and copies default attributes like other attributes.
void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                  const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  constexpr std::uint64_t elementSteps = 500;
  constexpr std::uint64_t attributeSteps = 350;
  constexpr std::uint64_t definitionSteps = 24;
  enforce(prefixesInScope.size(), depthLimit);
  std::size_t& prefixes = prefixesInScope.emplace_back(prefixesInScope.back());
  std::uint64_t steps = elementSteps;
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
    prefixes += declaresNamespace(attribute.getQName()) ? 1 : 0;
    if (!attribute.getSpecified()) {
      const auto characters = XMLString::stringLen(attribute.getQName()) + XMLString::stringLen(attribute.getValue());
      steps += attributeSteps + characters * (isLookedUp(attribute) ? price() : readingSteps);
    }
  }
  if (declaration.hasAttDefs()) {
    prefixes += namespacesByDefault;
    steps += declaration.getAttDefList().getAttDefCount() * (definitionSteps + prefixesInScope.size() + prefixes) +
             namespacesByDefault * price();
  }
  mostInScope = std::max(mostInScope, prefixesInScope.size() + prefixes);
  charge(steps);
  DocumentBuilder::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void DocumentParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                const XMLCh* prefix) {
  prefixesInScope.pop_back();
  DocumentBuilder::endElement(declaration, uriId, isRoot, prefix);
}

void DocumentParser::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
  const auto [nodes, steps] = costOfModel(declaration);
  enforce(nodes, modelLimit);
  charge(steps);
  DocumentBuilder::elementDecl(declaration, isIgnored);
}

void DocumentParser::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition,
                            bool isIgnored) {
  const std::u16string_view enumeration = definition.getEnumeration() != nullptr ? definition.getEnumeration() : u"";
  enforce(enumeration.size(), enumerationLimit);
  longestEnumeration = std::max(longestEnumeration, enumeration.size());
  hasLists = hasLists || definition.getType() == XMLAttDef::IDRefs || definition.getType() == XMLAttDef::Entities;
  if (definition.getValue() != nullptr && declaresNamespace(definition.getFullName())) {
    namespacesByDefault += 1 + XMLString::stringLen(definition.getValue());
  }
  charge(0);
  DocumentBuilder::attDef(element, definition, isIgnored);
}

void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) {
  longestEntity = std::max<std::size_t>(longestEntity, declaration.getValueLen());
  charge(0);
  DocumentBuilder::entityDecl(declaration, isParameterEntity, isIgnored);
}

// Warnings are charged too: Xerces-C formats their text before the handler drops it.
void DocumentParser::error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
                           const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) {
  constexpr std::uint64_t errorSteps = 5'000;
  work += errorSteps;
  check();
  if (type != ErrType_Warning) {
    enforce(++errors, errorLimit);
    errorText += XMLString::stringLen(text);
    enforce(errorText, errorTextLimit);
  }
  DocumentBuilder::error(code, domain, type, text, systemId, publicId, line, column);
}

// Called in callbacks, because the characters that were read before a callback have been looked up.
void DocumentParser::charge(std::uint64_t steps) {
  work += steps;
  check();
  charactersThen = charactersRead;
  candidatesThen = memory.candidates;
}

// Characters are copied about five times before they are in the document.
void DocumentParser::check() {
  constexpr std::uint64_t bytesOfCopies = 10;
  if (memory.isAbandoned) {
    throw xercesc::OutOfMemoryException();
  }
  const std::uint64_t characters = charactersRead - charactersThen;
  const std::uint64_t candidates = memory.candidates - std::min(memory.candidates, candidatesThen);
  enforce(std::max(work, characters * std::max(candidates / 3, hasLists ? characters / 3 : 0)), budgets.work);
  enforce(memoryTaken() + bytesOfCopies * characters, budgets.memory);
}

// The memory of the parser, and what the nodes, the trees over them and the record take: for a character, 2 bytes in
// the document and at most 12 in the source and target of the record.
std::uint64_t DocumentParser::memoryTaken() const {
  constexpr std::uint64_t bytesOfElement = 320;
  constexpr std::uint64_t bytesOfAttribute = 32;
  constexpr std::uint64_t bytesOfCharacter = 14;
  return memory.bytes + bytesOfElement * contents().elements + bytesOfAttribute * contents().attributes +
         bytesOfCharacter * contents().characters;
}

std::uint64_t DocumentParser::memoryLeft() const {
  return budgets.memory.most - std::min(budgets.memory.most, memoryTaken());
}

void DocumentParser::enforce(std::uint64_t count, const Limit& limit) {
  if (count > limit.most) {
    memory.isAbandoned = true;
    getErrorHandler()->fatalError(xercesc::SAXParseException(limit.message, *getScanner()->getLocator()));
    throw DocumentRefused();
  }
}

}  // namespace jexxml
