// DocumentParser: the parser, held to the budgets and limits of document/guard/limits.h.
#pragma once

#include "document/document_builder.h"
#include "document/guard/counted_memory.h"
#include "document/guard/limits.h"

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace jexxml {

// Thrown out of a parse when the document goes over a limit, after that was reported as a fatal error.
struct DocumentRefused {};

// The base of DocumentParser that is there before the parser, which uses it, and after it.
struct DocumentMemory {
  CountedMemory memory;
};

// Serves one parse. A document that goes over a budget or limit is reported to the error handler as a fatal error, with
// the place in the document, and DocumentRefused is thrown: out of a read of the document, out of a callback, or where
// an entity is opened.
//
// What bounds the work is one law: no look-up compares a character with more things than the parser has allocated. So
// each character is charged, before it is read, with a price that grows with the blocks of the parser's memory, and an
// entity with that of its characters each time that it is opened. No table of Xerces-C's needs to be known for that.
// Its look-ups in lists without blocks of their own add to the price: the open elements and the prefixes in scope, and
// the values of an enumeration. A callback charges what no character pays for: startElement the definitions of the
// element's attributes, and its attributes by default; elementDecl the automaton of a content model.
//
// Names of a tag, and tokens of a value, are looked up when all are read, so what is read between two callbacks is held
// against the budget as a square. In the type declaration all of this is smaller than its limit lets it grow.
class DocumentParser : private DocumentMemory, public DocumentBuilder {
 public:
  explicit DocumentParser(const Budgets& given);

  // Throws what the base does, DocumentRefused, and xercesc::OutOfMemoryException.
  void parse(const xercesc::InputSource& source);

  // What the document, and what is to be built over it, leave of the budget of memory, in bytes.
  std::uint64_t memoryLeft() const;

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void startIntSubset() override { inType = true; }
  void endIntSubset() override { inType = false; }
  void elementDecl(const xercesc::DTDElementDecl& declaration, bool isIgnored) override;
  void attDef(const xercesc::DTDElementDecl& element, const xercesc::DTDAttDef& definition, bool isIgnored) override;
  void entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) override;
  void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* text, const XMLCh* systemId,
             const XMLCh* publicId, XMLFileLoc line, XMLFileLoc column) override;

 private:
  std::uint64_t price() const;
  std::uint64_t memoryTaken() const;
  void read(std::uint64_t count);
  void openEntity();
  void charge(std::uint64_t steps);
  void check();
  void hold(std::uint64_t count, const Limit& limit);

  const Budgets budgets;
  std::uint64_t work = 0;
  std::uint64_t charactersRead = 0;
  std::uint64_t charactersBefore = 0;              // the last callback
  std::uint64_t thingsThen = 0;                    // at the last callback
  std::vector<std::size_t> prefixesInScope = {0};  // of the document and each open element
  std::size_t mostInScope = 0;                     // open elements and prefixes, at one time
  bool inType = false;
  bool hasLists = false;                // some attribute is a list of references
  std::size_t longestEnumeration = 0;   // characters
  std::size_t namespacesByDefault = 0;  // characters, and one for each
  std::size_t longestEntity = 0;        // characters
  std::size_t errors = 0;
  std::size_t errorText = 0;  // characters
};

}  // namespace jexxml
