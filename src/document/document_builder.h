// DocumentBuilder: a parser that builds only the part of a document that the trees need.
//
// The trees need the elements and their attributes, under their qualified names. Default attributes are included,
// because Xerces-C's scanner delivers them like other attributes. Text, comments, processing instructions, namespaces
// and declarations are left out. Elements in entities are left out too, because they are not children of the element
// that contains the entity reference. Xerces-C's own document is not built.
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

// For one parse. `fCurrentNode` is the element that was added last. Throws std::bad_alloc, and what the base class
// throws.
class DocumentBuilder : public xercesc::XercesDOMParser {
 public:
  using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;

  using XercesDOMParser::XercesDOMParser;

  // Owned by this object, and complete after the parse. `getDocument` of the base class returns null.
  DOMNode* document() { return &documentNode; }

  // The size of the document so far.
  struct Contents {
    std::size_t elements = 0;
    std::size_t attributes = 0;
    std::size_t characters = 0;  // of attribute values
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
  std::vector<ElementNode**> links = {&documentNode.root};  // for the next child of the document and each open element
  std::set<std::u16string, std::less<>> names;              // of attributes
  std::vector<const XMLCh*> lastNames;                      // of attributes, by position in the tag
};

}  // namespace jexxml
