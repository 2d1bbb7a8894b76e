// DocumentParser: the DOM parser, held to the budgets and limits of document/guard/limits.h.
#ifndef QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H
#define QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H

#include "document/document_builder.h"
#include "document/guard/counted_memory.h"
#include "document/guard/limits.h"
#include "document/guard/name_table.h"
#include "document/guard/object_kinds.h"
#include "document/guard/tag_tables.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jexxml {

// Thrown out of a parse when the document goes over a limit, after that was reported as a fatal error.
struct DocumentRefused {};

// The base of DocumentParser that is there before the parser, which uses it, and after it.
struct DocumentMemory {
  CountedMemory memory;
};

// Serves one parse. A document that goes over a budget or limit is reported to the error handler as a fatal error, with
// the place in the document, and DocumentRefused is thrown.
//
// Work is charged where the parser library calls back, for what it did since the last callback and for what it will do
// for this one. What it does before it calls back is bounded by these:
//
//   a look-up: no bucket of any of its tables holds more than 768 names;
//   a tag: the attributes that it gives are seen before the parser library looks them up, and of namespaces by default
//   an element has at most 768;
//   a declaration, an identifier: each new name is taken as it is allocated;
//   an entity: its text is charged when its reader is allocated.
//
// All else takes time in proportion to the text. Memory is looked at whenever some is allocated. An exception may leave
// an allocation, except one that a destructor makes: the only one is the list of nodes with which the destructor of a
// content model goes through it.
class DocumentParser : private DocumentMemory, public DocumentBuilder {
 public:
  explicit DocumentParser(const Budgets& given);
  DocumentParser(const DocumentParser&) = delete;
  DocumentParser& operator=(const DocumentParser&) = delete;
  ~DocumentParser() override;

  // The most bytes that the parse so far has had in use at one time, and the work that it has taken.
  std::size_t mostBytesInUse() const { return memory.mostBytes; }
  std::uint64_t workDone() const { return work; }

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void startEntityReference(const xercesc::XMLEntityDecl& entity) override {
    entityCharacters = 0;  // in content
    DocumentBuilder::startEntityReference(entity);
  }
  void doctypeDecl(const xercesc::DTDElementDecl& /*root*/, const XMLCh* /*publicId*/, const XMLCh* /*systemId*/,
                   bool /*hasInternalSubset*/, bool /*hasExternalSubset*/) override {
    hasType = true;
  }
  void startIntSubset() override { inDeclarations = true; }
  void endIntSubset() override { inDeclarations = false; }
  void elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) override;
  void startAttList(const xercesc::DTDElementDecl& declaration) override;
  void attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition, bool isIgnored) override;
  void entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) override;
  void notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) override;
  void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text, const XMLCh* systemId,
             const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) override;

 private:
  void chargeElement(const xercesc::XMLElementDecl& declaration, const XMLCh* prefix, const Attributes& attributes,
                     XMLSize_t attributeCount);
  std::uint64_t costOf(const xercesc::XMLAttr& attribute) const;
  static std::uint64_t costOfTokens(std::uint64_t characters, const NameTable& table);
  std::uint64_t costOfPrefix(const XMLCh* prefix) const;
  std::uint64_t costOfMappings(std::uint64_t prefixed, std::uint64_t mappings) const;
  std::uint64_t costOfNamespaces(GivenAttributes given, std::size_t& mappings);
  std::uint64_t costOfNamespace(std::u16string_view prefix, std::u16string_view name);
  void checkAllocation(std::size_t size);
  void checkMemory(std::size_t more);
  void lookAtTag();
  void openReader();
  void holdTokens();
  std::uint64_t enumerationSteps(std::uint64_t characters) const;
  std::uint64_t fullestOfAll() const;
  void declare(NameTable& table, std::u16string_view name);
  void charge(std::uint64_t steps);
  void spend(std::uint64_t steps);
  void hold(std::uint64_t count, const Limit& limit);
  void refuse(const XMLCh* message);

  const Budgets budgets;
  std::uint64_t work = 0;
  bool refused = false;

  // The names in the parser library's tables.
  NameTable declaredElements{109};
  NameTable undeclaredElements{29};
  NameTable generalEntities{109};
  NameTable parameterEntities{109};
  NameTable notations{109};
  NameTable prefixes{109};
  NameTable namespaces{109};
  NameTable identifierNames{109};
  std::size_t undeclaredSeen = 0;
  TagTables tagTables;
  const ObjectKind secondTable;

  // The attributes of the tag that is read, by place, and behind them those of others that had more.
  std::vector<const xercesc::KVStringPair*> givenAttributes;
  std::size_t entries = 0;  // in tables of the parser library that were allocated since the last callback
  std::size_t entriesToLook = 0;
  std::uint64_t entityCharacters = 0;  // read since the last callback

  // Where the name of an object goes that was allocated, and how many blocks after it the name is.
  NameTable* awaitingName = nullptr;
  int blocksToName = 0;
  bool inDeclarations = false;
  bool hasType = false;

  std::size_t depth = 0;
  std::vector<std::size_t> mappingsInScope = {0};  // of prefixes to namespaces, by depth
  bool readerSeen = false;
  std::size_t mostReaders = 1;
  std::size_t longestEntityName = 0;
  std::size_t mostDefinitions = 0;  // of attributes of an element
  std::size_t prefixedDefinitions = 0;
  std::unordered_map<const xercesc::XMLElementDecl*, std::size_t> namespacesOfElement;  // by default

  std::uint64_t tokensByDefault = 0;   // characters
  std::size_t longestModel = 0;        // names
  std::size_t longestEnumeration = 0;  // characters
  std::size_t errors = 0;
  std::size_t errorText = 0;  // characters
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H
