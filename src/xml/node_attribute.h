// NodeAttribute: one XML attribute of a node's element.
#ifndef QZJEXXML_XML_NODE_ATTRIBUTE_H
#define QZJEXXML_XML_NODE_ATTRIBUTE_H

#include <xercesc/dom/DOMNode.hpp>

#include <string>

namespace jexxml {

using xercesc::DOMNode;

// Looked up once by fetch, then read as text. Nothing that the pointers refer to is owned: the DOM
// document must outlive every use but destruction, and `attributeName` ends with the build.
struct NodeAttribute {
  // `element` may be null; `name` is an entry of the build's XmlCommonStrings.
  NodeAttribute(DOMNode* element, const XMLCh* name) : ownerNode(element), attributeName(name) {}

  // Looks the attribute up on its element. Without an element or a name it writes
  // "\nOwner Node and Attribute Name Not Set!" and leaves the record unfilled.
  void fetch();

  // The value in the local code page; empty for an absent attribute, and for one that was never
  // fetched, which is reported as "Attribute has not been built!" at every call. Converted at the
  // first call and kept. The reference is valid as long as the record.
  const std::string& getText();

  // As getText, but into `out`, whose room is used again, and without keeping the text here.
  void readText(std::string& out) const;

  const XMLCh* nodeName = nullptr;  // null until fetched
  int nodeType = 0;                 // a DOMNode::NodeType; 0 until fetched
  const XMLCh* value = nullptr;     // null until fetched, and when the attribute is absent
  DOMNode* ownerNode;
  const XMLCh* attributeName;
  bool missing = false;  // a lookup found no such attribute
  std::string text;
};

}  // namespace jexxml

#endif  // QZJEXXML_XML_NODE_ATTRIBUTE_H
