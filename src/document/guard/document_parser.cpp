#include "document/guard/document_parser.h"

#include "document/guard/content_model_cost.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/framework/XMLRefInfo.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/KVStringPair.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <algorithm>
#include <string_view>

namespace jexxml {

using xercesc::XMLAttDef;
using xercesc::XMLPlatformUtils;
using xercesc::XMLString;

namespace {

// Steps of work. What takes memory is charged for that too.
constexpr std::uint64_t elementSteps = 500;
constexpr std::uint64_t attributeSteps = 300;
constexpr std::uint64_t declarationSteps = 1'000;
constexpr std::uint64_t entitySteps = 5'000;    // the parser library ends each by an exception of its own
constexpr std::uint64_t readerSteps = 500'000;  // of one more than were ever open: it has buffers of 160 KiB
constexpr std::uint64_t entityCharacterSteps = 32;
constexpr std::uint64_t valueCharacterSteps = 8;
constexpr std::uint64_t namespaceCharacterSteps = 40;
constexpr std::uint64_t definitionSteps = 24;
constexpr std::uint64_t comparisonSteps = 8;
constexpr std::uint64_t visitSteps = 16;  // of a name in a bucket
constexpr std::uint64_t errorSteps = 5'000;

constexpr std::size_t fullestBucket = 64;
constexpr std::size_t identifiersAtOnce = 64;

// Characters of an enumeration. The values in one tag are looked up in it before the callback: at most a quarter of the
// tag's characters.
constexpr std::size_t longestEnumerationAllowed = 4'000;

// The block of an object of the parser library, before which it keeps whose memory it is.
template <typename T>
std::size_t blockOf() {
  return XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*)) + sizeof(T);
}

const std::size_t readerBlock = blockOf<xercesc::XMLReader>();
const std::size_t streamBlock = blockOf<xercesc::BinMemInputStream>();
const std::size_t pairBlock = blockOf<xercesc::KVStringPair>();
const std::size_t declarationBlock = blockOf<xercesc::DTDElementDecl>();
const std::size_t identifierBlock = blockOf<xercesc::XMLRefInfo>();

bool declaresNamespace(std::u16string_view attributeName) {
  return attributeName == u"xmlns" || attributeName.starts_with(u"xmlns:");
}

// Of neither a namespace nor a prefix.
bool isPlain(const xercesc::XMLAttr& attribute) { return *attribute.getPrefix() == 0 && *attribute.getName() != u'x'; }

}  // namespace

DocumentParser::DocumentParser(const Budgets& given) : DocumentBuilder(nullptr, &memory, nullptr), budgets(given) {
  memory.beforeAllocation = [this](std::size_t size) { checkAllocation(size); };
  memory.onDeallocation = [this](std::size_t size) { countDeallocation(size); };
}

DocumentParser::~DocumentParser() { memory.beforeAllocation = memory.onDeallocation = nullptr; }

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
  mostAttributes = std::max<std::size_t>(mostAttributes, attributeCount);
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
  std::uint64_t scopes = depth;
  std::uint64_t steps = elementSteps + mostAttributes;
  if (!isSimple) {
    const std::uint64_t definitions = declaration.hasAttDefs() ? declaration.getAttDefList().getAttDefCount() : 0;
    const std::uint64_t compared = declaredElements.fullestBucket() + undeclaredElements.fullestBucket() + longestModel;
    steps +=
        (comparisonSteps + XMLString::stringLen(declaration.getFullName())) * compared + definitionSteps * definitions;
    std::uint64_t lookups = 1;
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
      const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
      steps += costOf(attribute, attributeCount + definitions);
      if (declaresNamespace(attribute.getQName())) {
        ++mappings;
        declare(prefixes, attribute.getName());
        declare(namespaces, attribute.getValue());
        steps += namespaceCharacterSteps * XMLString::stringLen(attribute.getValue());
      } else if (*attribute.getPrefix() != 0) {
        lookups += 2;
      }
    }
    scopes = 2 * lookups * (depth + mappings);
  }
  charge(steps + scopes);
}

// `others` is what an attribute is compared with: those of its tag, and the definitions of its element.
std::uint64_t DocumentParser::costOf(const xercesc::XMLAttr& attribute, std::uint64_t others) {
  constexpr std::uint64_t inANameTable = visitSteps;
  const std::uint64_t value = XMLString::stringLen(attribute.getValue());
  std::uint64_t steps = attributeSteps +
                        (comparisonSteps + XMLString::stringLen(attribute.getQName())) * (inANameTable + others) +
                        valueCharacterSteps * value;
  switch (attribute.getType()) {
    case XMLAttDef::ID:
    case XMLAttDef::IDRef:
    case XMLAttDef::IDRefs:
    case XMLAttDef::Entity:
    case XMLAttDef::Entities:
      steps += 2 * visitSteps * value;
      break;
    case XMLAttDef::Notation:
    case XMLAttDef::Enumeration:
      steps += (1 + value / 2) * longestEnumeration;
      break;
    default:
      break;
  }
  return steps;
}

void DocumentParser::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
  const ContentModel model = contentModelOf(declaration);
  hold(model.names.size(), modelLimit);
  declare(declaredElements, declaration.getFullName());
  for (const std::u16string_view name : model.names) {
    declare(declaredElements, name);
  }
  longestModel = std::max(longestModel, model.names.size());
  charge(declarationSteps + model.cost);
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
  if (enumeration.size() > longestEnumerationAllowed) {
    refuse(budgets.work.message);
  }
  mostDefinitions = std::max(mostDefinitions, definitions);
  longestEnumeration = std::max(longestEnumeration, enumeration.size());
  const auto values = static_cast<std::uint64_t>(1 + std::ranges::count(enumeration, u' '));
  charge(attributeSteps + (visitSteps + XMLString::stringLen(definition.getFullName())) * definitions +
         values * enumeration.size() + valueCharacterSteps * XMLString::stringLen(definition.getValue()));
  DocumentBuilder::attDef(element, definition, isIgnored);
}

// The document's own reader has the size that tells of an entity's: where it was not seen, the parser library is not
// the one that this was compiled for.
void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) {
  if (openReaders == 0) {
    refuse(u"entities are not read with this version of the parser library");
  }
  declare(isParameterEntity ? parameterEntities : generalEntities, declaration.getName());
  charge(declarationSteps);
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

void DocumentParser::checkAllocation(std::size_t size) {
  ++allocations;
  if (size == readerBlock) {
    openReader();
  } else if (size == pairBlock) {
    countPair();
  } else if (size == identifierBlock) {
    checkIdentifiers();
  } else if (size == declarationBlock) {
    ++newDeclarations;
  }
  if (!CountedMemory::mayBeADestructors(size)) {
    checkMemory(size);
    hold(newDeclarations, modelLimit);
  }
}

void DocumentParser::checkMemory(std::size_t more) {
  if (memory.reserveUsed && !refused) {
    refused = true;
    throw xercesc::OutOfMemoryException();
  }
  hold(memory.bytesInUse + more, budgets.memory);
}

void DocumentParser::countDeallocation(std::size_t size) {
  if (size == readerBlock) {
    --openReaders;
  }
}

// The block before a reader's is the stream of the entity's text, which is complete by then.
void DocumentParser::openReader() {
  if (++openReaders == 1) {
    return;
  }
  const auto [block, size] = memory.newestBlock();
  if (size != streamBlock) {
    refuse(u"entities are not read with this version of the parser library");
    return;
  }
  ++newAttributes;  // which may have one each, and are not seen then
  const auto* object = static_cast<const std::byte*>(block) + (streamBlock - sizeof(xercesc::BinMemInputStream));
  const std::uint64_t characters =
      reinterpret_cast<const xercesc::BinMemInputStream*>(object)->getSize() / sizeof(XMLCh);
  const std::uint64_t compared = openReaders + generalEntities.fullestBucket() + parameterEntities.fullestBucket();
  spend(entitySteps + entityCharacterSteps * characters + (comparisonSteps + longestEntityName) * compared);
  if (openReaders > mostReaders) {
    mostReaders = openReaders;
    spend(readerSteps);
  }
}

// A block of the size of a pair, the name and the value of an attribute that the tag being read has at a place where no
// tag had one so far. Each may be compared with all others and with the definitions of its element, and its prefix with
// all that are in scope; the charge in the callback is higher. Other blocks have that size too, but pairs follow each
// other with two blocks between, name and value, or three where the list of pairs grows.
void DocumentParser::countPair() {
  constexpr std::size_t period = 3;
  constexpr std::uint64_t inFlightSteps = 3;
  const std::size_t distance = allocations - pairAllocation;
  if (distance < period) {
    return;
  }
  pairAllocation = allocations;
  newAttributes += distance <= period + 1 ? 1 : 0;
  const std::uint64_t attributes = mostAttributes + newAttributes;
  const std::uint64_t mappings = mappingsInScope.empty() ? 0 : mappingsInScope.back();
  hold(work + attributes * (inFlightSteps * (attributes + 2 * mostDefinitions) + depth + mappings), budgets.work);
}

void DocumentParser::checkIdentifiers() {
  auto& identifiers = *getScanner()->getIDRefList();
  if (++newIdentifiers < std::max<std::size_t>(identifiersAtOnce, identifiers.getCount() / 8)) {
    return;
  }
  newIdentifiers = 0;
  spend(visitSteps * identifiers.getCount());
  Buckets buckets(identifiers.getHashModulus());
  xercesc::RefHashTableOfEnumerator<xercesc::XMLRefInfo> each(&identifiers);
  while (each.hasMoreElements()) {
    buckets.add(Buckets::Hash(each.nextElement().getRefName()));
  }
  hold(buckets.fullest(), {fullestBucket, budgets.work.message});
}

void DocumentParser::declare(NameTable& table, std::u16string_view name) {
  table.add(name);
  hold(table.fullestBucket(), {fullestBucket, budgets.work.message});
}

// For a callback.
void DocumentParser::charge(std::uint64_t steps) {
  newAttributes = newDeclarations = 0;
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
