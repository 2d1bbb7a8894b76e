#include "document/guard/document_parser.h"

#include "document/guard/content_model_cost.h"
#include "document/guard/steps.h"

#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/framework/XMLEntityDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/KVStringPair.hpp>
#include <xercesc/util/RefHash2KeysTableOf.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <algorithm>
#include <string>
#include <string_view>

namespace jexxml {

using xercesc::XMLAttDef;
using xercesc::XMLString;

namespace {

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
  std::size_t& mappings = mappingsInScope.emplace_back(mappingsInScope.back());
  bool isSimple = !hasType && attributeCount <= few && *prefix == 0 && mappings == 0;
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
      steps += costOfTokens(value, identifierNames);
      break;
    case XMLAttDef::Entity:
    case XMLAttDef::Entities:
      steps += costOfTokens(value, generalEntities);
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

std::uint64_t DocumentParser::costOfTokens(std::uint64_t characters, const NameTable& table) {
  return (2 * visitSteps + characterSteps * table.fullestBucket()) * characters;
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
