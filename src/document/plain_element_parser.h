// PlainElementParser: the DOM parser, with a short way to add plain elements to the document.
//
// The parser library reaches the links of a node (parent, siblings, first child) through dynamic casts: four for each
// node that it appends, and again for an element's end. They are half of the instructions of a parse. This class
// knows the types of what it makes itself, and keeps the links of the open elements at hand.
//
// An element is plain when the document has no type declaration so far, and neither the element nor any of its
// attributes a prefix or a namespace. For such an element the library's startElement
//
//   makes the element, and makes room for its attributes in its map;
//   makes each attribute, puts it into the map in the order of the names, and makes its text, also if it is empty;
//   looks for default attributes, which there are none of without a type declaration;
//   appends the element to the current node, and makes it the current node;
//
// and so does this class, with the same classes of nodes and the same values in every field; the look for defaults is
// left out. The root element, and every element that is not plain, is the library's to add.
//
// The classes of nodes are the library's own, from headers that it installs but does not promise to keep. So they
// are used with the one version that was looked at; with any other, and with QZJEXXML_PLAIN_ELEMENTS off, all
// elements are the library's to add.
#ifndef QZJEXXML_DOCUMENT_PLAIN_ELEMENT_PARSER_H
#define QZJEXXML_DOCUMENT_PLAIN_ELEMENT_PARSER_H

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class DOMChildNode;
class DOMElementImpl;
class DOMParentNode;
XERCES_CPP_NAMESPACE_END

namespace jexxml {

// Serves one parse.
class PlainElementParser : public xercesc::XercesDOMParser {
 public:
  using XercesDOMParser::XercesDOMParser;

  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                    bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                  const XMLCh* prefix) override;

 private:
  // An element that is not closed yet, with the links of its first child and of its last one. Children that the
  // library adds, comments for instance, make these stale; then they are looked up again.
  struct OpenElement {
    xercesc::DOMNode* node;
    xercesc::DOMNode* parent;
    xercesc::DOMParentNode* links;
    xercesc::DOMNode* firstChild = nullptr;
    xercesc::DOMChildNode* firstLinks = nullptr;
    xercesc::DOMNode* lastChild = nullptr;
    xercesc::DOMChildNode* lastLinks = nullptr;
  };

  bool isPlain(unsigned int uriId, const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
               XMLSize_t attributeCount) const;
  void addAttributes(xercesc::DOMElementImpl& element, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                     XMLSize_t attributeCount);
  const XMLCh* nameInDocument(const XMLCh* name, XMLSize_t place);
  static void append(xercesc::DOMElementImpl& element, OpenElement& parent);

  std::vector<OpenElement> openElements;
  std::vector<const XMLCh*> names;  // of the last attribute at each place, in the document's table
};

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_PLAIN_ELEMENT_PARSER_H
