// DocumentBuilder: the DOM parser, which builds of a document what the trees are built over.
//
// That is its elements with their attributes, under their names as written. Nobody asks a document for anything else,
// so nothing else is built: no text, comment or instruction, no namespace, no part of the type declaration, and no
// content of an entity, since an element that comes out of one is no child of the element around the reference.
// Attributes by default come from the scanner, like others.
//
// Elements are added a short way. The parser library looks each name up in the document's own hash table, and reaches
// the links of a node (parent, siblings, first child) through dynamic casts: four for each node that it appends, and
// again for an element's end. They are half of the instructions of a parse. This class makes the same nodes with the
// same values in every field, but knows their types, keeps the links of the open elements at hand, and has the names.
//
// The classes of nodes are the library's own, from headers that it installs but does not promise to keep. So they
// are used with the one version that was looked at; with any other, and with QZJEXXML_PLAIN_ELEMENTS off, elements are
// added through the interface of the DOM.
#ifndef QZJEXXML_DOCUMENT_DOCUMENT_BUILDER_H
#define QZJEXXML_DOCUMENT_DOCUMENT_BUILDER_H

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class DOMAttrImpl;
class DOMChildNode;
class DOMElementImpl;
class DOMParentNode;
XERCES_CPP_NAMESPACE_END

namespace jexxml {

// Serves one parse. As in the base, `fCurrentNode` is the element that was added last. Throws std::bad_alloc beside
// what the base throws.
class DocumentBuilder : public xercesc::XercesDOMParser {
 public:
  using Attributes = xercesc::RefVectorOf<xercesc::XMLAttr>;

  using XercesDOMParser::XercesDOMParser;

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const Attributes& attributes, XMLSize_t attributeCount, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;
  void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void endDocument() override;

  void docCharacters(const XMLCh*, XMLSize_t, bool) override {}
  void ignorableWhitespace(const XMLCh*, XMLSize_t, bool) override {}
  void docComment(const XMLCh*) override {}
  void docPI(const XMLCh*, const XMLCh*) override {}
  void startIntSubset() override {}
  void endIntSubset() override {}
  void elementDecl(const xercesc::DTDElementDecl&, bool) override {}
  void startAttList(const xercesc::DTDElementDecl&) override {}
  void attDef(const xercesc::DTDElementDecl&, const xercesc::DTDAttDef&, bool) override {}
  void endAttList(const xercesc::DTDElementDecl&) override {}
  void entityDecl(const xercesc::DTDEntityDecl&, bool, bool) override {}
  void notationDecl(const xercesc::XMLNotationDecl&, bool) override {}

 protected:
  // Called where an element is added through the interface of the DOM, with the number of names that may be compared
  // for it: the document's hash table does not grow, and may have all names so far in one bucket.
  virtual void namesWalked(std::uint64_t /*names*/) {}

 private:
  // An element that is not closed yet, with its last child.
  struct OpenElement {
    xercesc::DOMNode* node;
    xercesc::DOMParentNode* links = nullptr;
    xercesc::DOMChildNode* firstLinks = nullptr;
    xercesc::DOMNode* lastChild = nullptr;
    xercesc::DOMChildNode* lastLinks = nullptr;
  };

  void addAttributes(xercesc::DOMElementImpl& element, const Attributes& attributes, XMLSize_t attributeCount);
  static void append(xercesc::DOMElementImpl& element, OpenElement& parent);
  const XMLCh* nameAt(XMLSize_t place, const XMLCh* name);
  const XMLCh* kept(std::u16string_view name);

  std::size_t openEntities = 0;
  std::vector<OpenElement> openElements;
  std::vector<xercesc::DOMAttrImpl*> ordered;   // attributes of one element, by name
  std::set<std::u16string, std::less<>> names;  // of attributes, as the document refers to them
  std::vector<const XMLCh*> lastNames;          // of the last attribute at each place
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_DOCUMENT_BUILDER_H
