// DocumentParser: the DOM parser, with limits on what one document may cost.
//
// The parser library alone takes minutes, or all of the memory, for some documents of a few kilobytes:
// it counts entity expansions in text and attributes, but not those in parameter entities and default
// values, nor what they expand to; and what it does for each element, name or declaration often grows
// with the number of those before it.
#ifndef QZJEXXML_XML_DOCUMENT_PARSER_H
#define QZJEXXML_XML_DOCUMENT_PARSER_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/SecurityManager.hpp>

namespace jexxml {

// No description file comes near these; the deepest element of either vocabulary is the fifth.
inline constexpr std::size_t maximumDepth = 1'000;
inline constexpr std::size_t maximumAttributes = 1'000;       // on one element
inline constexpr std::size_t maximumNames = 10'000;           // different names, of elements and of attributes each
inline constexpr std::size_t maximumNamespaces = 10'000;      // declarations
inline constexpr std::size_t maximumDeclarations = 10'000;    // of entities and notations
inline constexpr std::size_t maximumExpansions = 50'000;      // of entities, as the parser library counts them
inline constexpr std::size_t maximumEntitiesOpened = 60'000;  // all of them

// Thrown out of a parse when the document goes over a limit, after that was reported as a fatal error.
struct DocumentRefused {};

// The parser library's default memory, with a count of what the parser takes of it. What has not been
// given back is released at the end: the parser library forgets a little where an exception passes it.
class CountedMemory final : public xercesc::MemoryManager {
 public:
  CountedMemory() = default;
  CountedMemory(const CountedMemory&) = delete;
  CountedMemory& operator=(const CountedMemory&) = delete;
  ~CountedMemory() override;

  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  xercesc::MemoryManager* getExceptionMemoryManager() override;

  std::size_t bytesInUse = 0;
  std::function<void(std::size_t size)> beforeAllocation;  // if set, called first; may throw

 private:
  // Stands before each block; all are in a list.
  struct alignas(std::max_align_t) Block {
    Block* previous;
    Block* next;
    std::size_t size;
  };

  Block* lastBlock = nullptr;
};

// The base of DocumentParser that is there before the parser, which uses it, and after it.
struct DocumentMemory {
  CountedMemory memory;
};

// Serves one parse. The document that it builds holds no text: the vocabularies have none, so that it would
// mostly be the white space between elements. A document that goes over a limit is reported to the error
// handler as a fatal error, with the place in the document, and DocumentRefused is thrown.
class DocumentParser final : private DocumentMemory, public xercesc::XercesDOMParser {
 public:
  // The memory that the document may take is in proportion to its size in bytes.
  explicit DocumentParser(std::size_t documentSize);
  DocumentParser(const DocumentParser&) = delete;
  DocumentParser& operator=(const DocumentParser&) = delete;
  ~DocumentParser() override;

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                    bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override;
  void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) override;
  void entityDecl(const xercesc::DTDEntityDecl& declaration, bool isParameterEntity, bool isIgnored) override;
  void notationDecl(const xercesc::XMLNotationDecl& declaration, bool isIgnored) override;

 private:
  void checkAllocation(std::size_t size);
  void checkSize(std::size_t growth);
  void skipText(std::size_t length);
  void checkAttributeName(std::size_t place, const XMLCh* name);
  void countDeclaration();
  [[noreturn]] void refuse(const char16_t* message);

  xercesc::SecurityManager securityManager;
  std::size_t memoryLimit;
  std::size_t skippedText = 0;  // bytes
  bool refused = false;
  std::size_t depth = 0;
  std::size_t namespaces = 0;
  std::size_t declarations = 0;
  std::size_t entitiesOpened = 0;
  std::set<std::u16string> attributeNames;
  std::vector<std::u16string> lastNames;  // of the attribute at each place, in whichever element had one
};

}  // namespace jexxml

#endif  // QZJEXXML_XML_DOCUMENT_PARSER_H
