// The nodes of a document: the document itself, its elements and their attributes, read-only.
//
// They implement the part of Xerces-C's DOMNode that the trees use, in little memory: a document of 100,000 files takes
// a seventh of what Xerces-C's own nodes take. Their memory is the DocumentBuilder's, and they are never destroyed.
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

// What the three kinds have in common. Every operation that changes a node, or that the trees have no use for, throws a
// DOMException.
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

// An element is the map of its own attributes, which stand in the order in which Xerces-C's scanner gives them: as in
// the tag, then those by default.
class ElementNode final : public ReadOnlyNode, public DOMNamedNodeMap {
 public:
  // Neither is owned.
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
