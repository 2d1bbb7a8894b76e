#include "document/document_builder.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/XercesVersion.hpp>

#include <algorithm>

#if QZJEXXML_PLAIN_ELEMENTS && _XERCES_VERSION == 30204
#define QZJEXXML_SHORT_WAY 1
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>
#endif

namespace jexxml {

using namespace xercesc;

void DocumentBuilder::startEntityReference(const XMLEntityDecl& /*entity*/) { ++openEntities; }

void DocumentBuilder::endEntityReference(const XMLEntityDecl& /*entity*/) { --openEntities; }

void DocumentBuilder::endElement(const XMLElementDecl& /*declaration*/, unsigned int /*uriId*/, bool /*isRoot*/,
                                 const XMLCh* /*prefix*/) {
  if (openEntities == 0) {
    openElements.pop_back();
  }
}

// Not the base's, which makes a copy of the type declaration's entities.
void DocumentBuilder::endDocument() { fDocument->setErrorChecking(true); }

const XMLCh* DocumentBuilder::kept(std::u16string_view name) {
  auto found = names.find(name);
  if (found == names.end()) {
    found = names.emplace(name).first;
  }
  return found->c_str();
}

#if QZJEXXML_SHORT_WAY

namespace {

// The vector of a map, which only its own kind can see.
struct AttributeMap : DOMAttrMapImpl {
  static DOMNodeVector& nodesOf(DOMAttrMapImpl& map) { return *(map.*(&AttributeMap::fNodes)); }
};

}  // namespace

// An element's name is its declaration's, which lives as long as the parser.
void DocumentBuilder::startElement(const XMLElementDecl& declaration, unsigned int /*uriId*/, const XMLCh* /*prefix*/,
                                   const Attributes& attributes, XMLSize_t attributeCount, bool /*isEmpty*/,
                                   bool isRoot) {
  if (openEntities != 0) {
    return;
  }
  auto* element = new (fDocument, DOMMemoryManager::ELEMENT_OBJECT) DOMElementImpl(fDocument, XMLUni::fgZeroLenString);
  element->fName = declaration.getFullName();
  if (attributeCount != 0) {
    addAttributes(*element, attributes, attributeCount);
  }
  if (isRoot) {
    fDocument->appendChild(element);
  } else {
    append(*element, openElements.back());
  }
  fCurrentNode = element;
  openElements.push_back({.node = element, .links = &element->fParent});
}

void DocumentBuilder::addAttributes(DOMElementImpl& element, const Attributes& attributes, XMLSize_t attributeCount) {
  element.fAttributes->reserve(attributeCount);
  ordered.clear();
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    const XMLAttr& given = *attributes.elementAt(i);
    auto* attribute = new (fDocument, DOMMemoryManager::ATTR_OBJECT) DOMAttrImpl(fDocument, XMLUni::fgZeroLenString);
    attribute->fName = nameAt(i, given.getQName());
    attribute->fNode.fOwnerNode = &element;
    attribute->fNode.isOwned(true);
    attribute->fNode.isSpecified(given.getSpecified());
    ordered.push_back(attribute);

    auto* text = new (fDocument, DOMMemoryManager::TEXT_OBJECT) DOMTextImpl(fDocument, given.getValue());
    text->fNode.fOwnerNode = attribute;
    text->fNode.isOwned(true);
    text->fNode.isFirstChild(true);
    text->fChild.previousSibling = text;
    attribute->fParent.fFirstChild = text;
  }
  std::ranges::sort(ordered, [](const DOMAttrImpl* first, const DOMAttrImpl* second) {
    return XMLString::compareString(first->fName, second->fName) < 0;
  });
  DOMNodeVector& map = AttributeMap::nodesOf(*element.fAttributes);
  for (DOMAttrImpl* attribute : ordered) {
    map.addElement(attribute);
  }
}

// Attributes at one place mostly have the same name, which costs a comparison instead of a search.
const XMLCh* DocumentBuilder::nameAt(XMLSize_t place, const XMLCh* name) {
  if (place >= lastNames.size()) {
    lastNames.resize(place + 1);
  }
  if (!XMLString::equals(lastNames[place], name)) {
    lastNames[place] = kept(name);
  }
  return lastNames[place];
}

// A first child's previous sibling is the last child.
void DocumentBuilder::append(DOMElementImpl& element, OpenElement& parent) {
  element.fNode.fOwnerNode = parent.node;
  element.fNode.isOwned(true);
  if (parent.lastChild == nullptr) {
    parent.links->fFirstChild = &element;
    parent.firstLinks = &element.fChild;
    element.fNode.isFirstChild(true);
  } else {
    parent.lastLinks->nextSibling = &element;
    element.fChild.previousSibling = parent.lastChild;
  }
  parent.firstLinks->previousSibling = &element;
  parent.lastChild = &element;
  parent.lastLinks = &element.fChild;
}

#else

void DocumentBuilder::startElement(const XMLElementDecl& declaration, unsigned int /*uriId*/, const XMLCh* /*prefix*/,
                                   const Attributes& attributes, XMLSize_t attributeCount, bool /*isEmpty*/,
                                   bool isRoot) {
  if (openEntities != 0) {
    return;
  }
  kept(declaration.getFullName());
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    kept(attributes.elementAt(i)->getQName());
  }
  namesWalked((1 + attributeCount) * names.size());
  DOMElement* element = fDocument->createElement(declaration.getFullName());
  for (XMLSize_t i = 0; i < attributeCount; ++i) {
    element->setAttribute(attributes.elementAt(i)->getQName(), attributes.elementAt(i)->getValue());
  }
  (isRoot ? fDocument : openElements.back().node)->appendChild(element);
  fCurrentNode = element;
  openElements.push_back({.node = element});
}

#endif

}  // namespace jexxml
