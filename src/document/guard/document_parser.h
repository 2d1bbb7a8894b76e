// DocumentParser: the parser that enforces the budgets and limits of document/guard/limits.h.
#pragma once

#include "document/document_builder.h"
#include "document/guard/counted_memory.h"
#include "document/guard/limits.h"

#include <xercesc/sax/InputSource.hpp>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace jexxml {

// Thrown from a parse when the document exceeds a budget or limit, after a fatal error has been reported.
struct DocumentRefused {};

// A base of DocumentParser, so that the memory is constructed before the parser that uses it, and destroyed after it.
struct DocumentMemory {
  CountedMemory memory;
};

// For one parse. If the document exceeds a budget or limit, the error handler gets a fatal error with the position, and
// DocumentRefused is thrown: from a read of the document, a callback, or the opening of an entity.
//
// One law bounds the work: a lookup compares a character with no more blocks than CountedMemory::candidates counts.
// Therefore each character is charged before it is read, and its price grows with the number of candidates. An entity
// is charged for its characters each time it is opened. The law holds for every hash table of Xerces-C, whatever its
// collisions. Items that have no blocks of their own add to the price: open elements, prefixes in scope, and the values
// of an enumeration. Callbacks charge the work that does not depend on characters: startElement charges the definitions
// of the element's attributes and its default attributes, elementDecl the automaton of a content model.
//
// The names in a tag, and the tokens in a value, are looked up after all of them have been read. Therefore the budget
// also bounds a product: the characters read since the last callback, times the candidates allocated since then. In the
// type declaration, dtdLimit keeps this product small.
class DocumentParser : private DocumentMemory, public DocumentBuilder {
 public:
  explicit DocumentParser(const Budgets& given);

  // Throws what the base class throws, DocumentRefused, and xercesc::OutOfMemoryException.
  void parse(const xercesc::InputSource& source);

  // What is left of the memory budget after the document, its tree and its record, in bytes.
  std::uint64_t memoryLeft() const;

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void startIntSubset() override { inDtd = true; }
  void endIntSubset() override { inDtd = false; }
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
  void enforce(std::uint64_t count, const Limit& limit);

  const Budgets budgets;
  std::uint64_t work = 0;
  std::uint64_t charactersRead = 0;
  std::uint64_t charactersThen = 0;                // charactersRead at the last callback
  std::uint64_t candidatesThen = 0;                // memory.candidates at the last callback
  std::vector<std::size_t> prefixesInScope = {0};  // in the document and in each open element
  std::size_t mostInScope = 0;                     // maximum of open elements and prefixes in scope
  bool inDtd = false;
  bool hasLists = false;                // an attribute is declared as a list of references
  std::size_t longestEnumeration = 0;   // characters
  std::size_t namespacesByDefault = 0;  // default xmlns attributes: their number, and the characters of their values
  std::size_t longestEntity = 0;        // characters
  std::size_t errors = 0;
  std::size_t errorText = 0;  // characters
};

}  // namespace jexxml
