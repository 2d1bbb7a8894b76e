#include "document/guard/document_parser.h"

#include "document/guard/content_model_cost.h"
#include "document/guard/object_kinds.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
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
constexpr std::uint64_t entitySteps = 6'500;    // the parser library ends each by an exception of its own
constexpr std::uint64_t readerSteps = 500'000;  // of one more than were ever open: it has buffers of 160 KiB
constexpr std::uint64_t entityCharacterSteps = 32;
constexpr std::uint64_t valueCharacterSteps = 8;
constexpr std::uint64_t namespaceCharacterSteps = 40;
constexpr std::uint64_t definitionSteps = 24;
constexpr std::uint64_t comparisonSteps = 8;
constexpr std::uint64_t characterSteps = 4;  // of a name that is compared with one that begins alike
constexpr std::uint64_t visitSteps = 16;     // of a name in a bucket
constexpr std::uint64_t errorSteps = 5'000;

constexpr std::uint64_t nodesForAName = 3;  // in the tree of a content model: it, how often, and the one to its left

// Names that stand at round numbers fill a bucket with hundreds, by the parser library's choice of its size.
constexpr std::size_t fullestBucket = 768;

bool declaresNamespace(std::u16string_view attributeName) {
  return attributeName == u"xmlns" || attributeName.starts_with(u"xmlns:");
}

// Of neither a namespace nor a prefix.
bool isPlain(const xercesc::XMLAttr& attribute) { return *attribute.getPrefix() == 0 && *attribute.getName() != u'x'; }

}  // namespace

DocumentParser::DocumentParser(const Budgets& given) : DocumentBuilder(nullptr, &memory, nullptr), budgets(given) {
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
  std::uint64_t steps = elementSteps + mostAttributes + comparisonSteps * undeclaredElements.fullestBucket();
  if (!isSimple) {
    const std::uint64_t definitions = declaration.hasAttDefs() ? declaration.getAttDefList().getAttDefCount() : 0;
    const std::uint64_t others = definitions + comparedWith(attributes, attributeCount);
    const std::uint64_t compared = declaredElements.fullestBucket() + undeclaredElements.fullestBucket() + longestModel;
    steps += (4 + XMLString::stringLen(declaration.getFullName())) * compared + definitionSteps * definitions +
             definitions * definitions / 2;
    for (XMLSize_t i = 0; i < definitions; ++i) {  // also those whose attribute is given
      const XMLAttDef& definition = declaration.getAttDefList().getAttDef(i);
      if (definition.getValue() != nullptr && declaresNamespace(definition.getFullName())) {
        ++mappings;
        steps += costOfNamespace(definition.getValue());
      }
    }
    std::uint64_t lookups = 1;
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
      const xercesc::XMLAttr& attribute = *attributes.elementAt(i);
      steps += costOf(attribute, others);
      if (declaresNamespace(attribute.getQName())) {
        ++mappings;
        declare(prefixes, attribute.getName());
        declare(namespaces, attribute.getValue());
        steps += costOfNamespace(attribute.getValue());
      } else if (*attribute.getPrefix() != 0) {
        lookups += 2;
      }
    }
    scopes = 2 * lookups * (depth + mappings);
  }
  charge(steps + scopes);
}

// How many attributes of its tag each is compared with: all, up to a hundred; above, those in its bucket of two tables,
// which grow eightfold when there are four to a bucket.
std::uint64_t DocumentParser::comparedWith(const Attributes& attributes, std::size_t count) {
  constexpr std::size_t fewerThanATable = 100;
  const auto grow = [count](std::size_t& modulus) {
    while (count >= modulus * 4) {
      modulus = modulus * 8 + 1;
    }
  };
  grow(undeclaredAttributesModulus);
  if (count <= fewerThanATable) {
    return count;
  }
  duplicatesModulus = duplicatesModulus == 0 ? 2 * count + 1 : duplicatesModulus;
  grow(duplicatesModulus);
  Buckets undeclared(undeclaredAttributesModulus);
  Buckets duplicates(duplicatesModulus);
  std::uint64_t characters = 0;
  for (XMLSize_t i = 0; i < count; ++i) {
    const std::u16string_view name = attributes.elementAt(i)->getName();
    const Buckets::Hash hash(name);
    undeclared.add(hash);
    duplicates.add(hash);
    characters += name.size();
  }
  hold(costOfTag(count, characters), budgets.work);  // of the next tag with names as long
  return comparisonSteps * (undeclared.fullest() + duplicates.fullest());
}

// When each of so many attributes is compared with all. Comparisons cost more when names do not stay in the processor's
// cache.
std::uint64_t DocumentParser::costOfTag(std::uint64_t attributes, std::uint64_t characters) {
  constexpr std::uint64_t manyNames = 200;
  constexpr std::uint64_t manyCharacters = 50'000;
  return attributes *
         ((comparisonSteps + attributes / manyNames) * attributes + (2 + characters / manyCharacters) * characters);
}

// `others` is what an attribute is compared with: those of its tag, and the definitions of its element.
std::uint64_t DocumentParser::costOf(const xercesc::XMLAttr& attribute, std::uint64_t others) const {
  const std::uint64_t value = XMLString::stringLen(attribute.getValue());
  std::uint64_t steps = attributeSteps +
                        (comparisonSteps + XMLString::stringLen(attribute.getQName())) * (visitSteps + others) +
                        valueCharacterSteps * value;
  switch (attribute.getType()) {
    case XMLAttDef::ID:
    case XMLAttDef::IDRef:
    case XMLAttDef::IDRefs:
    case XMLAttDef::Entity:
    case XMLAttDef::Entities:
      steps += (2 * visitSteps + characterSteps * identifierNames.fullestBucket()) * value;
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

std::uint64_t DocumentParser::costOfNamespace(std::u16string_view name) const {
  return (namespaceCharacterSteps + characterSteps * namespaces.fullestBucket()) * name.size();
}

void DocumentParser::elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) {
  const ContentModel model = contentModelOf(declaration);
  hold(model.names.size(), modelLimit);
  hold(model.nodes, {nodesForAName * modelLimit.most, modelLimit.message});
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
  hold(enumeration.size() * (budgets.size / 4), budgets.work);  // of one tag's values, which are looked up in it
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
  if (!readerSeen) {
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

// An object of the parser library is recognised at the allocation that it makes next itself.
void DocumentParser::checkAllocation(std::size_t size) {
  const auto newest = memory.newestBlock();
  if (isIdentifierNext) {  // the newest block is its text
    isIdentifierNext = false;
    declare(identifierNames, static_cast<const XMLCh*>(newest.first));
  } else if (size == readerBlockSize()) {
    openReader();
  } else if (objectKinds().pair.in(newest) != nullptr) {
    countAttribute(size / sizeof(XMLCh));
  } else if (objectKinds().identifier.in(newest) != nullptr) {
    isIdentifierNext = true;
  } else if (objectKinds().declaration.in(newest) != nullptr) {
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
  spend(entitySteps + entityCharacterSteps * characters + (comparisonSteps + longestEntityName) * compared);
  if (open > mostReaders) {
    mostReaders = open;
    spend(readerSteps);
  }
}

// An attribute of the tag that is being read, at a place where no tag has had one so far, with the characters of its
// name. Each may be compared with all others and with the definitions of its element, and its prefix with all that are
// in scope; the charge in the callback goes by what there is.
void DocumentParser::countAttribute(std::size_t characters) {
  newNameCharacters += characters;
  const std::uint64_t attributes = mostAttributes + ++newAttributes;
  const std::uint64_t mappings = mappingsInScope.empty() ? 0 : mappingsInScope.back();
  hold(work + costOfTag(attributes, newNameCharacters) +
           attributes * (comparisonSteps * mostDefinitions + depth + mappings),
       budgets.work);
}

void DocumentParser::declare(NameTable& table, std::u16string_view name) {
  table.add(name);
  hold(table.fullestBucket(), {fullestBucket, budgets.work.message});
}

// For a callback.
void DocumentParser::charge(std::uint64_t steps) {
  newAttributes = newNameCharacters = newDeclarations = 0;
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
