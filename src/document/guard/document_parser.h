// DocumentParser: the DOM parser, held to the limits of document/guard/limits.h.
#ifndef QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H
#define QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H

#include "document/document_builder.h"
#include "document/guard/counted_memory.h"
#include "document/guard/limits.h"

#include <xercesc/util/SecurityManager.hpp>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace jexxml {

// Thrown out of a parse when the document goes over a limit, after that was reported as a fatal error.
struct DocumentRefused {};

// The base of DocumentParser that is there before the parser, which uses it, and after it.
struct DocumentMemory {
  CountedMemory memory;
};

// Serves one parse. The document that it builds holds no text: the vocabularies have none, so that it would
// mostly be the white space between elements. A document that goes over a limit is reported to the error
// handler as a fatal error, with the place in the document, and DocumentRefused is thrown.
//
// An exception may leave the parser library where it calls back, where it reads on in the source and where it
// opens an entity: these are the checkpoints. What it takes between two of them is bounded by what it reads
// at once (48 KiB, or one declared text) and by the limits on content models and tags.
class DocumentParser : private DocumentMemory, public DocumentBuilder {
 public:
  // `size` is what the document may take in memory.
  explicit DocumentParser(const Limit& size);
  DocumentParser(const DocumentParser&) = delete;
  DocumentParser& operator=(const DocumentParser&) = delete;
  ~DocumentParser() override;

  // As the base's, with a checkpoint wherever the source is read.
  void parse(const xercesc::InputSource& source);

  // The most bytes that the parse so far has had in use at one time.
  std::size_t mostBytesInUse() const { return memory.mostBytes; }

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                    bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override;
  void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) override;
  void elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) override;
  void startAttList(const xercesc::DTDElementDecl& declaration) override;
  void attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition, bool isIgnored) override;
  void entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) override;
  void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) override;
  void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text, const XMLCh* systemId,
             const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) override;

 private:
  void checkpoint();
  void checkMemory();
  void checkAllocation(std::size_t size);
  void checkReading(std::size_t size);
  void checkAttribute(std::size_t place, const xercesc::XMLAttr& attribute);
  void skipText(std::size_t length);
  void hold(std::uint64_t count, const Limit& limit);

  xercesc::SecurityManager securityManager;
  Limit sizeLimit;
  bool refused = false;
  std::size_t blocksAtCheckpoint = 0;
  std::size_t charactersSinceCheckpoint = 0;  // read at most, in a document that declares lists
  bool declaresLists = false;                 // attributes of the types IDREFS and ENTITIES
  std::size_t longestEntity = 0;              // characters
  std::uint64_t entityText = 0;               // bytes of the entities that were opened, or more, and their cost
  std::size_t skippedText = 0;                // bytes
  std::size_t depth = 0;
  std::size_t namespaces = 0;
  std::size_t entities = 0;     // and notations, declared
  std::size_t identifiers = 0;  // and references to them and to entities
  std::size_t elementDeclarations = 0;
  std::uint64_t contentModels = 0;  // their cost
  std::size_t errors = 0;
  std::size_t errorText = 0;  // characters
  const xercesc::XMLElementDecl* lastElement = nullptr;
  std::set<const xercesc::XMLElementDecl*> elements;  // that occur
  std::set<std::u16string> attributeNames;
  struct LastName {
    std::u16string name;
    bool isNamespace = false;
  };
  std::vector<LastName> lastNames;  // of the attribute at each place, in whichever element had one
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_DOCUMENT_PARSER_H
