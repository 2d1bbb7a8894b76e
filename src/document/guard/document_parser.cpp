#include "document/guard/document_parser.h"

#include "document/guard/content_model_cost.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/KVStringPair.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/RefHash2KeysTableOf.hpp>
#include <xercesc/util/RefHashTableOf.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace jexxml {

using xercesc::XMLAttDef;
using xercesc::XMLPlatformUtils;
using xercesc::XMLString;

namespace {

// Steps of work. What takes memory is charged for that too.
constexpr std::uint64_t elementSteps = 500;
constexpr std::uint64_t attributeSteps = 350;
constexpr std::uint64_t declarationSteps = 1'000;
constexpr std::uint64_t entitySteps = 6'500;    // the parser library ends each by an exception of its own
constexpr std::uint64_t readerSteps = 500'000;  // of one more than were ever open: it has buffers of 160 KiB
constexpr std::uint64_t entityCharacterSteps = 32;
constexpr std::uint64_t valueCharacterSteps = 20;  // also to convert it for the record
constexpr std::uint64_t namespaceCharacterSteps = 40;
constexpr std::uint64_t definitionSteps = 24;
constexpr std::uint64_t comparisonSteps = 8;
constexpr std::uint64_t characterSteps = 4;  // of a name that is compared with one that begins alike
constexpr std::uint64_t visitSteps = 16;     // of a name in a bucket
constexpr std::uint64_t bucketSteps = 4;     // of a table that is emptied
constexpr std::uint64_t errorSteps = 5'000;

constexpr std::size_t entriesToFirstLook = 64;

constexpr std::uint64_t nodesForAName = 3;  // in the tree of a content model: it, how often, and the one to its left

// Names that stand at round numbers fill a bucket with hundreds, by the parser library's choice of its size.
constexpr std::size_t fullestBucket = 768;

bool declaresNamespace(std::u16string_view attributeName) {
  return attributeName == u"xmlns" || attributeName.starts_with(u"xmlns:");
}

// A value as it stands in a tag, without the marks of characters that were given by reference. White space is a space.
std::u16string normalized(const XMLCh* value) {
  constexpr XMLCh mark = 0xFFFF;
  std::u16string text;
  for (; *value != 0; ++value) {
    if (*value == mark && value[1] != 0) {
      text += *++value;
    } else {
      text += xercesc::XMLChar1_0::isWhitespace(*value) ? u' ' : *value;
    }
  }
  return text;
}

// The sizes of an entry in the table of a tag's attributes, and in those of prefixes and namespaces.
bool isEntrySize(std::size_t size) {
  return size == sizeof(xercesc::RefHash2KeysTableBucketElem<xercesc::XMLAttr>) ||
         size == sizeof(xercesc::RefHashTableBucketElem<XMLCh>);
}

// Of neither a namespace nor a prefix.
bool isPlain(const xercesc::XMLAttr& attribute) { return *attribute.getPrefix() == 0 && *attribute.getName() != u'x'; }

}  // namespace

DocumentParser::DocumentParser(const Budgets& given)
    : DocumentBuilder(nullptr, &memory, nullptr),
      budgets(given),
      secondTable(xercesc::RefHash2KeysTableOf<xercesc::XMLAttr>(1, &memory)) {
  objectKinds();  // not first in a destructor
  memory.beforeAllocation = [this](std::size_t size) { checkAllocation(size); };
}

DocumentParser::~DocumentParser() { memory.beforeAllocation = nullptr; }

void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                  const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  hold(++depth, depthLimit);
  chargeElement(declaration, prefix, attributes, attributeCount);
  DocumentBuilder::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void DocumentParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                const XMLCh* prefix) {
  --depth;
  mappingsInScope.pop_back();
  DocumentBuilder::endElement(declaration, uriId, isRoot, prefix);
}

// A few attributes without namespaces are compared with each other only, which their own characters pay for.
void DocumentParser::chargeElement(const xercesc::XMLElementDecl& declaration, const XMLCh* prefix,
                                   const Attributes& attributes, XMLSize_t attributeCount) {
  constexpr XMLSize_t few = 16;
  const bool isDeclared = declaration.getCreateReason() != xercesc::XMLElementDecl::NoReason &&
                          declaration.getCreateReason() != xercesc::XMLElementDecl::JustFaultIn;
  if (!isDeclared && declaration.getId() > undeclaredSeen) {
    undeclaredSeen = declaration.getId();
    declare(undeclaredElements, declaration.getFullName());
  }
  std::size_t& mappings =
      mappingsInScope.emplace_back(mappingsInScope.empty() ? std::size_t{0} : mappingsInScope.back());
  bool isSimple = fDocumentType == nullptr && attributeCount <= few && *prefix == 0 && mappings == 0;
  for (XMLSize_t i = 0; i < attributeCount && isSimple; ++i) {
    isSimple = isPlain(*attributes.elementAt(i));
  }
  std::uint64_t steps = elementSteps + depth + bucketSteps * tagTables.bucketsFor(attributeCount) +
                        comparisonSteps * undeclaredElements.fullestBucket();
  if (!isSimple) {
    const std::uint64_t definitions = declaration.hasAttDefs() ? declaration.getAttDefList().getAttDefCount() : 0;
    const std::uint64_t compared = declaredElements.fullestBucket() + undeclaredElements.fullestBucket() + longestModel;
    steps += (visitSteps + XMLString::stringLen(declaration.getFullName())) * compared + definitionSteps * definitions +
             definitions * definitions / 2;
    for (XMLSize_t i = 0; i < definitions; ++i) {  // also those whose attribute is given
      const XMLAttDef& definition = declaration.getAttDefList().getAttDef(i);
      if (definition.getValue() != nullptr && declaresNamespace(definition.getFullName())) {
        ++mappings;
        steps += costOfNamespace(localPart(definition.getFullName()), definition.getValue());
      }
    }
    steps += costOfPrefix(prefix);
    XMLSize_t count = 0;
    std::uint64_t prefixed = *prefix != 0 ? 1 : 0;
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
      const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
      steps += costOf(attribute) + costOfPrefix(attribute.getPrefix());
      prefixed += *attribute.getPrefix() != 0 ? 1 : 0;
      count += attribute.getSpecified() ? 1 : 0;
    }
    if (count > givenAttributes.size() || (count > TagTables::few && !tagTables.hasSecond())) {
      refuse(u"attributes are not read with this version of the parser library");
    }
    const GivenAttributes given(givenAttributes.data(), count);
    steps += tagTables.costOf(given, definitions, true) + costOfNamespaces(given, mappings) +
             costOfMappings(1 + prefixed, mappings);
  }
  charge(steps);
  hold(work + costOfMappings(prefixedDefinitions, mappings), budgets.work);  // of a tag within this one
}

std::uint64_t DocumentParser::costOf(const xercesc::XMLAttr& attribute) const {
  const std::uint64_t value = XMLString::stringLen(attribute.getValue());
  std::uint64_t steps = attributeSteps + visitSteps * (comparisonSteps + XMLString::stringLen(attribute.getQName())) +
                        valueCharacterSteps * value;
  switch (attribute.getType()) {
    case XMLAttDef::ID:
    case XMLAttDef::IDRef:
    case XMLAttDef::IDRefs:
      steps += (2 * visitSteps + characterSteps * identifierNames.fullestBucket()) * value;
      break;
    case XMLAttDef::Entity:
    case XMLAttDef::Entities:
      steps += (2 * visitSteps + characterSteps * generalEntities.fullestBucket()) * value;
      break;
    case XMLAttDef::Notation:
    case XMLAttDef::Enumeration:
      steps += enumerationSteps(value);
      break;
    default:
      break;
  }
  return steps;
}

// A prefix is looked up in its table, and then among the mappings in scope, twice.
std::uint64_t DocumentParser::costOfPrefix(const XMLCh* prefix) const {
  return *prefix == 0 ? 0 : (comparisonSteps + XMLString::stringLen(prefix)) * prefixes.fullestBucket();
}

std::uint64_t DocumentParser::costOfMappings(std::uint64_t prefixed, std::uint64_t mappings) const {
  return 2 * prefixed * (depth + mappings);
}

// Of the attributes that declare namespaces, which are added to the mappings.
std::uint64_t DocumentParser::costOfNamespaces(GivenAttributes given, std::size_t& mappings) {
  std::uint64_t steps = 0;
  for (const xercesc::KVStringPair* attribute : given) {
    const bool isRead = attribute->getKey() != nullptr && attribute->getValue() != nullptr;
    if (isRead && declaresNamespace(attribute->getKey())) {
      ++mappings;
      steps += costOfNamespace(localPart(attribute->getKey()), normalized(attribute->getValue()));
    }
  }
  return steps;
}

std::uint64_t DocumentParser::costOfNamespace(std::u16string_view prefix, std::u16string_view name) {
  declare(prefixes, prefix);
  declare(namespaces, name);
  const std::uint64_t compared = std::max(prefixes.fullestBucket(), namespaces.fullestBucket());
  return (namespaceCharacterSteps + characterSteps * compared) * (prefix.size() + name.size());
}

void DocumentParser::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
  const ContentModel model = contentModelOf(declaration);
  hold(model.names.size(), modelLimit);
  hold(model.nodes, {nodesForAName * modelLimit.most, modelLimit.message});
  declare(declaredElements, declaration.getFullName());
  std::uint64_t steps = declarationSteps + model.cost;
  for (const std::u16string_view name : model.names) {
    declare(declaredElements, name);
    steps += (visitSteps + name.size()) * declaredElements.fullestBucket();
  }
  longestModel = std::max(longestModel, model.names.size());
  charge(steps);
  DocumentBuilder::elementDecl(declaration, isIgnored);
}

void DocumentParser::startAttList(const xercesc::DTDElementDecl& declaration) {
  declare(declaredElements, declaration.getFullName());
  charge(declarationSteps);
  DocumentBuilder::startAttList(declaration);
}

// The values of an enumeration are compared with each other when the declarations end.
void DocumentParser::attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition,
                            bool isIgnored) {
  const std::size_t definitions = element.getAttDefList().getAttDefCount();
  const std::u16string_view enumeration = definition.getEnumeration() != nullptr ? definition.getEnumeration() : u"";
  const std::uint64_t value = XMLString::stringLen(definition.getValue());
  mostDefinitions = std::max(mostDefinitions, definitions);
  longestEnumeration = std::max(longestEnumeration, enumeration.size());
  hold(enumerationSteps(budgets.size) / 2, budgets.work);  // of one tag's values
  const auto values = static_cast<std::uint64_t>(1 + std::ranges::count(enumeration, u' '));
  std::uint64_t steps = attributeSteps + (visitSteps + XMLString::stringLen(definition.getFullName())) * definitions +
                        values * enumeration.size() + valueCharacterSteps * value;
  if (declaresNamespace(definition.getFullName())) {
    const std::size_t namespacesByDefault = ++namespacesOfElement[&element];
    hold(namespacesByDefault, {fullestBucket, budgets.work.message});  // which one tag may add to a bucket
    steps += characterSteps * namespacesByDefault * value;
  } else if (localPart(definition.getFullName()) != definition.getFullName()) {
    ++prefixedDefinitions;
  }
  tokensByDefault += definition.getType() == XMLAttDef::CData ? 0 : value;
  charge(steps);
  holdTokens();
  DocumentBuilder::attDef(element, definition, isIgnored);
}

// The document's own reader has the size that tells of an entity's: where it was not seen, the parser library is not
// the one that this was compiled for.
void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) {
  if (!readerSeen) {
    refuse(u"entities are not read with this version of the parser library");
  }
  declare(isParameterEntity ? parameterEntities : generalEntities, declaration.getName());
  charge(declarationSteps);
  holdTokens();
  longestEntityName = std::max<std::size_t>(longestEntityName, XMLString::stringLen(declaration.getName()));
  DocumentBuilder::entityDecl(declaration, isParameterEntity, isIgnored);
}

void DocumentParser::notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) {
  declare(notations, declaration.getName());
  charge(declarationSteps);
  DocumentBuilder::notationDecl(declaration, isIgnored);
}

// Warnings cost as much, but nobody sees them.
void DocumentParser::error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text,
                           const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) {
  spend(errorSteps);
  if (type != ErrType_Warning) {
    hold(++errors, errorLimit);
    errorText += XMLString::stringLen(text);
    hold(errorText, errorTextLimit);
  }
  DocumentBuilder::error(code, domain, type, text, systemId, publicId, line, column);
}

// An object of the parser library is recognised at the allocation that it makes next itself: for an attribute its name,
// for an identifier its name too, for a declaration an object with an empty prefix and a name, or both names.
void DocumentParser::checkAllocation(std::size_t size) {
  const auto newest = memory.newestBlock();
  if (awaitingName != nullptr && --blocksToName <= 0) {
    const auto* name = static_cast<const XMLCh*>(newest.first);
    if (*name != 0) {
      declare(*std::exchange(awaitingName, nullptr), name);
      holdTokens();
    }
  }
  if (size == readerBlockSize()) {
    openReader();
  } else if (secondTable.in(newest) != nullptr) {  // its buckets
    tagTables.makeSecond(size / sizeof(void*));
  } else if (const auto* attribute = objectKinds().pair.in<xercesc::KVStringPair>(newest)) {
    givenAttributes.push_back(attribute);
  } else if (objectKinds().identifier.in(newest) != nullptr) {
    awaitingName = &identifierNames;
    blocksToName = 1;
  } else if (inDeclarations && objectKinds().declaration.in(newest) != nullptr) {
    awaitingName = &declaredElements;
    blocksToName = 2;
  }
  if (!CountedMemory::mayBeADestructors(size)) {
    checkMemory(size);
  }
  if (isEntrySize(size)) {
    lookAtTag();
  }
}

void DocumentParser::checkMemory(std::size_t more) {
  if (memory.reserveUsed && !refused) {
    refused = true;
    throw xercesc::OutOfMemoryException();
  }
  hold(memory.bytesInUse + more, budgets.memory);
}

// A tag's attributes are looked up after all of them have been read. Each that then enters a table, and each prefix and
// namespace that is new, allocates an entry; while they are read, at most two of a name and a value have the size of
// one. So with each look reaching for twice as many attributes as there are entries, and the next look coming when
// there are a quarter more, none is looked up that no look has seen.
void DocumentParser::lookAtTag() {
  if (++entries < entriesToLook || givenAttributes.size() <= TagTables::few) {
    return;
  }
  entriesToLook = entries + entries / 4;
  const GivenAttributes given(givenAttributes.data(), std::min(2 * entries, givenAttributes.size()));
  std::size_t mappings = mappingsInScope.empty() ? 0 : mappingsInScope.back();
  const std::uint64_t steps = tagTables.costOf(given, mostDefinitions, false) + costOfNamespaces(given, mappings);
  hold(work + steps + costOfMappings(given.size() + prefixedDefinitions, mappings), budgets.work);
}

// Whatever an entity's text is, its names are looked up in one of the tables.
std::uint64_t DocumentParser::fullestOfAll() const {
  std::size_t most = 0;
  for (const NameTable* table : {&declaredElements, &undeclaredElements, &generalEntities, &parameterEntities,
                                 &notations, &prefixes, &namespaces, &identifierNames}) {
    most = std::max(most, table->fullestBucket());
  }
  return most;
}

// The block before an entity's reader is the stream of its text, which is complete by then.
void DocumentParser::openReader() {
  readerSeen = true;
  const auto* stream = objectKinds().stream.in<xercesc::BinMemInputStream>(memory.newestBlock());
  if (stream == nullptr) {  // the document's own, or a block that only has the size
    return;
  }
  const std::uint64_t characters = stream->getSize() / sizeof(XMLCh);
  const std::size_t open = getScanner()->getReaderMgr()->getReaderDepth();
  const std::uint64_t compared = open + generalEntities.fullestBucket() + parameterEntities.fullestBucket();
  spend(entitySteps + (entityCharacterSteps + fullestOfAll()) * characters +
        (comparisonSteps + longestEntityName) * compared);
  if (open > mostReaders) {
    mostReaders = open;
    spend(readerSteps);
  }
  entityCharacters += characters;
  holdTokens();
}

// Values are looked up after all of a tag have been read, and those by default before the first tag: tokens in an
// enumeration, identifiers, entities, and a few namespaces in each other. Entities can make them far longer than the
// document.
void DocumentParser::holdTokens() {
  const std::uint64_t characters = entityCharacters + tokensByDefault;
  const std::uint64_t compared = TagTables::few + identifierNames.fullestBucket() + generalEntities.fullestBucket();
  hold(work + enumerationSteps(characters) + characterSteps * compared * characters, budgets.work);
}

// To look up tokens, of which each may be one letter.
std::uint64_t DocumentParser::enumerationSteps(std::uint64_t characters) const {
  return longestEnumeration * (1 + characters / 2) * 5 / 2;
}

void DocumentParser::declare(NameTable& table, std::u16string_view name) {
  table.add(name);
  hold(table.fullestBucket(), {fullestBucket, budgets.work.message});
}

// For a callback.
void DocumentParser::charge(std::uint64_t steps) {
  entries = 0;
  entriesToLook = entriesToFirstLook;
  entityCharacters = 0;
  checkMemory(0);
  spend(steps);
}

void DocumentParser::spend(std::uint64_t steps) {
  work += steps;
  hold(work, budgets.work);
}

void DocumentParser::hold(std::uint64_t count, const Limit& limit) {
  if (count > limit.most) {
    refuse(limit.message);
  }
}

// After a refusal nothing is held any more, so that the parser library can clean up.
void DocumentParser::refuse(const XMLCh* message) {
  if (!refused) {
    refused = true;
    getErrorHandler()->fatalError(xercesc::SAXParseException(message, *getScanner()->getLocator()));
    throw DocumentRefused();
  }
}

}  // namespace jexxml
