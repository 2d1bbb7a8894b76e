// The nodes of a document: the document itself, its elements and their attributes, read-only.
//
// They implement the part of Xerces-C's DOMNode that the trees use. For a document of 100,000 files they take a seventh
// of the memory of Xerces-C's own nodes. The DocumentBuilder owns their memory and never calls their destructors.
#pragma once

#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <span>

namespace jexxml {

using xercesc::DOMNamedNodeMap;
using xercesc::DOMNode;

// Throws a DOMException: the operation is not supported.
[[noreturn]] void refuseOperation();

// The base of the three kinds of nodes. Operations that change a node, and operations that the trees do not use, throw
// a DOMException.
class ReadOnlyNode : public DOMNode {
 public:
  const XMLCh* getNodeValue() const override { return nullptr; }
  DOMNode* getNextSibling() const override { return nullptr; }
  DOMNamedNodeMap* getAttributes() const override { return nullptr; }
  bool hasChildNodes() const final { return getFirstChild() != nullptr; }
  bool isSameNode(const DOMNode* other) const final { return other == this; }

  DOMNode* getFirstChild() const override { refuseOperation(); }
  DOMNode* getParentNode() const final { refuseOperation(); }
  xercesc::DOMNodeList* getChildNodes() const final { refuseOperation(); }
  DOMNode* getLastChild() const final { refuseOperation(); }
  DOMNode* getPreviousSibling() const final { refuseOperation(); }
  xercesc::DOMDocument* getOwnerDocument() const final { refuseOperation(); }
  DOMNode* cloneNode(bool /*deep*/) const final { refuseOperation(); }
  DOMNode* insertBefore(DOMNode* /*added*/, DOMNode* /*next*/) final { refuseOperation(); }
  DOMNode* replaceChild(DOMNode* /*added*/, DOMNode* /*removed*/) final { refuseOperation(); }
  DOMNode* removeChild(DOMNode* /*removed*/) final { refuseOperation(); }
  DOMNode* appendChild(DOMNode* /*added*/) final { refuseOperation(); }
  void setNodeValue(const XMLCh* /*value*/) final { refuseOperation(); }
  void normalize() final { refuseOperation(); }
  bool isSupported(const XMLCh* /*feature*/, const XMLCh* /*version*/) const final { refuseOperation(); }
  const XMLCh* getNamespaceURI() const final { refuseOperation(); }
  const XMLCh* getPrefix() const final { refuseOperation(); }
  const XMLCh* getLocalName() const final { refuseOperation(); }
  void setPrefix(const XMLCh* /*prefix*/) final { refuseOperation(); }
  bool hasAttributes() const final { refuseOperation(); }
  bool isEqualNode(const DOMNode* /*other*/) const final { refuseOperation(); }
  void* setUserData(const XMLCh* /*key*/, void* /*data*/, xercesc::DOMUserDataHandler* /*handler*/) final {
    refuseOperation();
  }
  void* getUserData(const XMLCh* /*key*/) const final { refuseOperation(); }
  const XMLCh* getBaseURI() const final { refuseOperation(); }
  short compareDocumentPosition(const DOMNode* /*other*/) const final { refuseOperation(); }
  const XMLCh* getTextContent() const final { refuseOperation(); }
  void setTextContent(const XMLCh* /*text*/) final { refuseOperation(); }
  const XMLCh* lookupPrefix(const XMLCh* /*uri*/) const final { refuseOperation(); }
  bool isDefaultNamespace(const XMLCh* /*uri*/) const final { refuseOperation(); }
  const XMLCh* lookupNamespaceURI(const XMLCh* /*prefix*/) const final { refuseOperation(); }
  void* getFeature(const XMLCh* /*feature*/, const XMLCh* /*version*/) const final { refuseOperation(); }
  void release() final { refuseOperation(); }
};

class AttributeNode final : public ReadOnlyNode {
 public:
  // Neither text is owned.
  AttributeNode(const XMLCh* qualifiedName, const XMLCh* text) : name(qualifiedName), value(text) {}

  NodeType getNodeType() const override { return ATTRIBUTE_NODE; }
  const XMLCh* getNodeName() const override { return name; }
  const XMLCh* getNodeValue() const override { return value; }

 private:
  const XMLCh* name;
  const XMLCh* value;
};

// An element is also the map of its attributes. Their order is that of Xerces-C's scanner: the attributes in the tag,
// then the default attributes.
class ElementNode final : public ReadOnlyNode, public DOMNamedNodeMap {
 public:
  // Neither the name nor the attributes are owned.
  ElementNode(const XMLCh* qualifiedName, std::span<AttributeNode> given) : name(qualifiedName), attributes(given) {}

  NodeType getNodeType() const override { return ELEMENT_NODE; }
  const XMLCh* getNodeName() const override { return name; }
  DOMNode* getFirstChild() const override { return firstChild; }
  DOMNode* getNextSibling() const override { return nextSibling; }
  DOMNamedNodeMap* getAttributes() const override { return const_cast<ElementNode*>(this); }

  XMLSize_t getLength() const override { return attributes.size(); }
  DOMNode* item(XMLSize_t index) const override { return index < attributes.size() ? &attributes[index] : nullptr; }
  DOMNode* getNamedItem(const XMLCh* wanted) const override {
    for (AttributeNode& attribute : attributes) {
      if (xercesc::XMLString::equals(attribute.getNodeName(), wanted)) {
        return &attribute;
      }
    }
    return nullptr;
  }
  DOMNode* setNamedItem(DOMNode* /*added*/) override { refuseOperation(); }
  DOMNode* removeNamedItem(const XMLCh* /*removed*/) override { refuseOperation(); }
  DOMNode* getNamedItemNS(const XMLCh* /*uri*/, const XMLCh* /*local*/) const override { refuseOperation(); }
  DOMNode* setNamedItemNS(DOMNode* /*added*/) override { refuseOperation(); }
  DOMNode* removeNamedItemNS(const XMLCh* /*uri*/, const XMLCh* /*local*/) override { refuseOperation(); }

  ElementNode* firstChild = nullptr;
  ElementNode* nextSibling = nullptr;

 private:
  const XMLCh* name;
  std::span<AttributeNode> attributes;
};

class DocumentNode final : public ReadOnlyNode {
 public:
  NodeType getNodeType() const override { return DOCUMENT_NODE; }
  const XMLCh* getNodeName() const override { return u"#document"; }
  DOMNode* getFirstChild() const override { return root; }

  ElementNode* root = nullptr;
};

}  // namespace jexxml
