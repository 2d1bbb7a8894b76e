// DocumentBuilder: the parser that builds of a document what the trees are built over.
//
// That is its elements with their attributes, under their names as written. Nobody asks a document for anything else,
// so nothing else is built: no text, comment or instruction, no namespace, no part of the type declaration, and no
// content of an entity, since an element that comes out of one is no child of the element around the reference.
// Xerces-C's own document is never made either. Attributes by default come from the scanner, like others.
#pragma once

#include "document/document_nodes.h"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstddef>
#include <functional>
#include <memory_resource>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace jexxml {

// Serves one parse. As in the base, `fCurrentNode` is the element that was added last. Throws std::bad_alloc beside
// what the base throws.
class DocumentBuilder : public xercesc::XercesDOMParser {
 public:
  using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;

  using XercesDOMParser::XercesDOMParser;

  // The document, complete when the parse is. Owned; `getDocument` of the base stays null.
  DOMNode* document() { return &documentNode; }

  // What the document has so far; of characters, those of values.
  struct Contents {
    std::size_t elements = 0;
    std::size_t attributes = 0;
    std::size_t characters = 0;
  };
  const Contents& contents() const { return counted; }

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void startEntityReference(const xercesc::XMLEntityDecl& /*entity*/) override { ++openEntities; }
  void endEntityReference(const xercesc::XMLEntityDecl& /*entity*/) override { --openEntities; }

  void startDocument() override {}
  void endDocument() override {}
  void XMLDecl(const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*) override {}
  void docCharacters(const XMLCh*, XMLSize_t, bool) override {}
  void ignorableWhitespace(const XMLCh*, XMLSize_t, bool) override {}
  void docComment(const XMLCh*) override {}
  void docPI(const XMLCh*, const XMLCh*) override {}
  void doctypeDecl(const xercesc::DTDElementDecl&, const XMLCh*, const XMLCh*, bool, bool) override {}
  void doctypeComment(const XMLCh*) override {}
  void doctypePI(const XMLCh*, const XMLCh*) override {}
  void doctypeWhitespace(const XMLCh*, XMLSize_t) override {}
  void startIntSubset() override {}
  void endIntSubset() override {}
  void elementDecl(const xercesc::DTDElementDecl&, bool) override {}
  void startAttList(const xercesc::DTDElementDecl&) override {}
  void attDef(const xercesc::DTDElementDecl&, const xercesc::DTDAttDef&, bool) override {}
  void endAttList(const xercesc::DTDElementDecl&) override {}
  void entityDecl(const xercesc::DTDEntityDecl&, bool, bool) override {}
  void notationDecl(const xercesc::XMLNotationDecl&, bool) override {}
  void TextDecl(const XMLCh*, const XMLCh*) override {}

 private:
  std::span<AttributeNode> copyAttributes(const Attributes& attributes, XMLSize_t count);
  const XMLCh* intern(const XMLCh* name);
  const XMLCh* copy(const XMLCh* text);

  std::pmr::monotonic_buffer_resource arena;
  Contents counted;
  DocumentNode documentNode;
  std::size_t openEntities = 0;
  std::vector<ElementNode**> links = {&documentNode.root};  // of the document and each open element: to the next child
  std::set<std::u16string, std::less<>> names;              // of attributes
  std::vector<const XMLCh*> lastNames;                      // by place in the tag
};

}  // namespace jexxml
