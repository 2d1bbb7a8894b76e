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

namespace {

constexpr std::uint64_t readingSteps = 32;  // of a character, with the copies that are made of it

bool declaresNamespace(const XMLCh* name) { return *name == u'x' && std::u16string_view(name).starts_with(u"xmlns"); }

// Whether values of its type, or its name, are looked up in a table each time that the attribute stands in a tag.
bool isLookedUp(const xercesc::XMLAttr& attribute) {
  return attribute.getType() != XMLAttDef::CData || *attribute.getPrefix() != 0 ||
         declaresNamespace(attribute.getQName());
}

// The nodes of a content model, and the steps to make an automaton of it. A row of its table stands for the places in
// the model that a name just read may have been at, so a name that stands at k places can make 2^k rows:
// (a|b)*,a,(a|b),(a|b) does. A row has a cell for each name, and is compared with those in its bucket. Mixed content
// has no automaton.
std::pair<std::uint64_t, std::uint64_t> costOfModel(const xercesc::DTDElementDecl& declaration) {
  constexpr std::uint64_t farTooManyRows = std::uint64_t{1} << 30U;
  std::uint64_t nodes = 0;
  std::uint64_t names = 0;
  std::map<std::u16string_view, std::uint64_t> rowsOfName;
  // A model of many names is as deep as it is long, so that recursion would not do.
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

}  // namespace

DocumentParser::DocumentParser(const Budgets& given) : DocumentBuilder(nullptr, &memory, nullptr), budgets(given) {
  memory.beforeReader = [this] { openEntity(); };
}

void DocumentParser::parse(const xercesc::InputSource& source) {
  DocumentBuilder::parse(WatchedSource(source, &memory, [this](XMLSize_t bytes) { read(bytes); }));
  check();
}

// For each character: to read it, and to look it up. Of the things, some six belong to a name in a table; beyond 16,384
// they are not in the processor's cache.
std::uint64_t DocumentParser::price() const {
  constexpr std::uint64_t cached = 16'384;
  return readingSteps + memory.things * (cached + memory.things) / cached / 6 + mostInScope / 3 + longestEnumeration;
}

void DocumentParser::read(std::uint64_t count) {
  if (inType) {
    hold(charactersRead, typeLimit);
  }
  charactersRead += count;
  work += count * price();
  check();
}

// Where the reader of an entity is to be allocated. Which one it is cannot be seen, so that it may be the longest.
void DocumentParser::openEntity() {
  constexpr std::uint64_t readerSteps = 24'000;  // it has buffers of 160 KiB, which may be new from the system
  hold(getScanner()->getReaderMgr()->getReaderDepth(), entityLimit);
  work += readerSteps;
  read(longestEntity);
}

// All definitions of the element's attributes are visited three times for each tag, and namespaces by default looked up
// also where the tag has its own. An attribute by default is looked up and copied like another.
void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                  const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  constexpr std::uint64_t elementSteps = 500;
  constexpr std::uint64_t attributeSteps = 350;
  constexpr std::uint64_t definitionSteps = 24;
  hold(prefixesInScope.size(), depthLimit);
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
  hold(nodes, modelLimit);
  charge(steps);
  DocumentBuilder::elementDecl(declaration, isIgnored);
}

void DocumentParser::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition,
                            bool isIgnored) {
  const std::u16string_view enumeration = definition.getEnumeration() != nullptr ? definition.getEnumeration() : u"";
  hold(enumeration.size(), enumerationLimit);
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
    hold(++errors, errorLimit);
    errorText += XMLString::stringLen(text);
    hold(errorText, errorTextLimit);
  }
  DocumentBuilder::error(code, domain, type, text, systemId, publicId, line, column);
}

// For a callback: what was read before it has been looked up.
void DocumentParser::charge(std::uint64_t steps) {
  work += steps;
  check();
  charactersBefore = charactersRead;
  thingsThen = memory.things;
}

// What was read is copied some five times before it is in the document.
void DocumentParser::check() {
  constexpr std::uint64_t bytesOfCopies = 10;
  if (memory.isAbandoned) {
    throw xercesc::OutOfMemoryException();
  }
  const std::uint64_t characters = charactersRead - charactersBefore;
  const std::uint64_t things = memory.things - std::min(memory.things, thingsThen);
  hold(std::max(work, characters * std::max(things / 3, hasLists ? characters / 3 : 0)), budgets.work);
  hold(memoryTaken() + bytesOfCopies * characters, budgets.memory);
}

// The parser's own, and for the document's nodes as much as they, the trees over them and the record take: of a
// character, 2 bytes, and at most 12 in the record's source and target.
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

void DocumentParser::hold(std::uint64_t count, const Limit& limit) {
  if (count > limit.most) {
    memory.isAbandoned = true;
    getErrorHandler()->fatalError(xercesc::SAXParseException(limit.message, *getScanner()->getLocator()));
    throw DocumentRefused();
  }
}

}  // namespace jexxml
