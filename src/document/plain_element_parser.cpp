#include "document/plain_element_parser.h"

#include <xercesc/util/XercesVersion.hpp>

#if QZJEXXML_PLAIN_ELEMENTS && _XERCES_VERSION == 30204

#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMAttrNSImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementNSImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/internal/XMLScanner.hpp>

namespace jexxml {

using namespace xercesc;

namespace {

bool isNothing(const XMLCh* text) { return text == nullptr || *text == 0; }

// The vector of a map, which only its own kind can see.
struct AttributeMap : DOMAttrMapImpl {
  static DOMNodeVector& nodesOf(DOMAttrMapImpl& map) { return *(map.*(&AttributeMap::fNodes)); }
};

const XMLCh* nameOf(DOMNodeVector& attributes, XMLSize_t place) {
  return static_cast<DOMAttrImpl*>(attributes.elementAt(place))->fName;
}

// An attribute's name without its prefix, which only the attribute's own kind can see.
struct PlainAttribute : DOMAttrNSImpl {
  static void setName(DOMAttrNSImpl& attribute, const XMLCh* name) {
    attribute.fName = name;
    attribute.*(&PlainAttribute::fLocalName) = name;
  }
};

// Names mostly come in order, or nearly so.
void insertInOrder(DOMNodeVector& attributes, DOMAttrImpl& attribute) {
  XMLSize_t place = attributes.size();
  int order = -1;
  while (place > 0 && (order = XMLString::compareString(nameOf(attributes, place - 1), attribute.fName)) > 0) {
    --place;
  }
  if (order == 0) {
    attributes.setElementAt(&attribute, place - 1);
  } else {
    attributes.insertElementAt(&attribute, place);
  }
}

}  // namespace

void PlainElementParser::startElement(const XMLElementDecl& declaration, unsigned int uriId, const XMLCh* prefix,
                                      const RefVectorOf<XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                                      bool isRoot) {
  const bool parentIsKnown = !openElements.empty() && openElements.back().node == fCurrentParent;
  if (!parentIsKnown || !isPlain(uriId, prefix, attributes, attributeCount)) {
    DOMNode* parent = fCurrentParent;
    XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
    if (!isEmpty) {
      openElements.push_back({.node = fCurrentParent, .parent = parent, .links = castToParentImpl(fCurrentParent)});
    }
    return;
  }
  const XMLCh* name = declaration.getBaseName();
  auto* element =
      new (fDocument, DOMMemoryManager::ELEMENT_NS_OBJECT) DOMElementNSImpl(fDocument, nullptr, nullptr, name, name);
  if (attributeCount != 0) {
    addAttributes(*element, attributes, attributeCount);
  }
  append(*element, openElements.back());
  openElements.push_back({.node = element, .parent = fCurrentParent, .links = &element->fParent});
  fCurrentParent = element;
  fCurrentNode = element;
  if (isEmpty) {
    endElement(declaration, uriId, isRoot, prefix);
  }
}

void PlainElementParser::endElement(const XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                    const XMLCh* prefix) {
  DOMNode* parent = fDocument;
  if (!openElements.empty() && openElements.back().node == fCurrentParent) {
    parent = openElements.back().parent;
    openElements.pop_back();
  }
  if (parent != fDocument) {
    fCurrentNode = fCurrentParent;
    fCurrentParent = parent;
  } else {
    XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
  }
}

bool PlainElementParser::isPlain(unsigned int uriId, const XMLCh* prefix, const RefVectorOf<XMLAttr>& attributes,
                                 XMLSize_t attributeCount) const {
  const unsigned int noNamespace = getScanner()->getEmptyNamespaceId();
  if (fDocumentType != nullptr || uriId != noNamespace || !isNothing(prefix)) {
    return false;
  }
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    const XMLAttr& attribute = *attributes.elementAt(i);
    if (attribute.getURIId() != noNamespace || !isNothing(attribute.getPrefix()) ||
        XMLString::equals(attribute.getName(), XMLUni::fgXMLNSString)) {
      return false;
    }
  }
  return true;
}

void PlainElementParser::addAttributes(DOMElementImpl& element, const RefVectorOf<XMLAttr>& attributes,
                                       XMLSize_t attributeCount) {
  element.fAttributes->reserve(attributeCount);
  DOMNodeVector& map = AttributeMap::nodesOf(*element.fAttributes);
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    const XMLAttr& given = *attributes.elementAt(i);
    auto* attribute =
        new (fDocument, DOMMemoryManager::ATTR_NS_OBJECT) DOMAttrNSImpl(fDocument, XMLUni::fgZeroLenString);
    PlainAttribute::setName(*attribute, nameInDocument(given.getName(), i));
    attribute->fNode.fOwnerNode = &element;
    attribute->fNode.isOwned(true);
    attribute->fNode.isSpecified(given.getSpecified());
    insertInOrder(map, *attribute);

    auto* text = new (fDocument, DOMMemoryManager::TEXT_OBJECT) DOMTextImpl(fDocument, given.getValue());
    text->fNode.fOwnerNode = attribute;
    text->fNode.isOwned(true);
    text->fNode.isFirstChild(true);
    text->fChild.previousSibling = text;
    attribute->fParent.fFirstChild = text;
  }
}

// The look into the document's table costs more than all else of an attribute. Attributes at one place mostly have the
// same name, which costs a comparison.
const XMLCh* PlainElementParser::nameInDocument(const XMLCh* name, XMLSize_t place) {
  if (place >= names.size()) {
    names.resize(place + 1);
  }
  if (!XMLString::equals(names[place], name)) {
    names[place] = fDocument->getPooledString(name);
  }
  return names[place];
}

// A first child's previous sibling is the last child.
void PlainElementParser::append(DOMElementImpl& element, OpenElement& parent) {
  element.fNode.fOwnerNode = parent.node;
  element.fNode.isOwned(true);
  DOMNode*& first = parent.links->fFirstChild;
  if (first == nullptr) {
    first = &element;
    element.fNode.isFirstChild(true);
    element.fChild.previousSibling = &element;
  } else {
    if (parent.firstChild != first) {
      parent.firstChild = first;
      parent.firstLinks = castToChildImpl(first);
    }
    DOMNode* last = parent.firstLinks->previousSibling;
    if (parent.lastChild != last) {
      parent.lastLinks = castToChildImpl(last);
    }
    parent.lastLinks->nextSibling = &element;
    element.fChild.previousSibling = last;
    parent.firstLinks->previousSibling = &element;
  }
  parent.lastChild = &element;
  parent.lastLinks = &element.fChild;
}

}  // namespace jexxml

#else

namespace jexxml {

void PlainElementParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId,
                                      const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                      XMLSize_t attributeCount, bool isEmpty, bool isRoot) {
  XercesDOMParser::startElement(declaration, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
}

void PlainElementParser::endElement(const xercesc::XMLElementDecl& declaration, unsigned int uriId, bool isRoot,
                                    const XMLCh* prefix) {
  XercesDOMParser::endElement(declaration, uriId, isRoot, prefix);
}

}  // namespace jexxml

#endif
