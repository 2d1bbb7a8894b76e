#include "tree/dom_navigation.h"

#include "text/lcp_text.h"

#include <iostream>

namespace jexxml {

static bool isElement(const DOMNode& node) { return node.getNodeType() == DOMNode::ELEMENT_NODE; }

static DOMNode* firstMatchFrom(DOMNode* node, const ElementName& name) {
  while (node != nullptr && !name.matches(*node)) {
    node = node->getNextSibling();
  }
  return node;
}

static bool isMissing(const DOMNode* node, const ElementName& name) {
  return node == nullptr || name.text == nullptr || *name.text == '\0';
}

bool ElementName::matches(const DOMNode& node) const {
  const XMLCh* nodeName = node.getNodeName();
  if (nodeName != lastNodeName) {
    const LcpText converted(nodeName);
    lastMatched = !converted.isNull() && converted.view() == text;
    lastNodeName = nodeName;
  }
  return lastMatched && isElement(node);
}

int CountAllChildElements(DOMNode* node) {
  if (node == nullptr) {
    std::cerr << "CountAllChildElements: supplied parent node argument is null." << std::endl;
    return -1;
  }
  int count = isElement(*node) ? 1 : 0;
  for (DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
    count += CountAllChildElements(child);
  }
  return count;
}

int CountDirectChildrenWithThisName(DOMNode* parent, const ElementName& name) {
  if (isMissing(parent, name)) {
    std::cerr << "CountDirectChildrenWithThisName: supplied parent node or name argument is null." << std::endl;
    return -1;
  }
  int count = 0;
  for (DOMNode* child = parent->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
    count += name.matches(*child) ? 1 : 0;
  }
  return count;
}

DOMNode* GetFirstChildWithThisName(DOMNode* parent, const ElementName& name) {
  if (isMissing(parent, name)) {
    std::cerr << "GetFirstChildWithThisName: supplied parent node or name argument is null." << std::endl;
    return nullptr;
  }
  return firstMatchFrom(parent->getFirstChild(), name);
}

DOMNode* GetNextSiblingWithThisName(DOMNode* node, const ElementName& name) {
  if (isMissing(node, name)) {
    std::cerr << "GetNextSiblingWithThisName: supplied node or name argument is null." << std::endl;
    return nullptr;
  }
  return firstMatchFrom(node->getNextSibling(), name);
}

DOMNode* firstElementChild(const DOMNode& parent) {
  DOMNode* child = parent.getFirstChild();
  while (child != nullptr && !isElement(*child)) {
    child = child->getNextSibling();
  }
  return child;
}

}  // namespace jexxml
