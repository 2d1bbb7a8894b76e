#include "xml/node_attribute.h"

#include "xml/lcp_text.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <iostream>

namespace jexxml {
namespace {

// What DOMAttr::getValue returns, without the dynamic cast that takes most of its time, where the
// attribute consists of one text.
const XMLCh* valueOf(const DOMNode& attribute) {
  const DOMNode* child = attribute.getFirstChild();
  if (child != nullptr && child->getNextSibling() == nullptr && child->getNodeType() == DOMNode::TEXT_NODE) {
    return child->getNodeValue();
  }
  return static_cast<const xercesc::DOMAttr&>(attribute).getValue();
}

}  // namespace

void NodeAttribute::fetch() {
  if (ownerNode == nullptr || attributeName == nullptr) {
    std::cerr << "\nOwner Node and Attribute Name Not Set!" << std::endl;
    return;
  }
  const DOMNode* attribute = ownerNode->getAttributes()->getNamedItem(attributeName);
  if (attribute == nullptr) {
    missing = true;
    return;
  }
  nodeName = attribute->getNodeName();
  nodeType = attribute->getNodeType();
  value = valueOf(*attribute);
}

const std::string& NodeAttribute::getText() {
  if (value == nullptr && !missing) {
    std::cerr << "Attribute has not been built!" << std::endl;
  } else if (text.empty() && !missing) {
    text = LcpText(value).view();
  }
  return text;
}

void NodeAttribute::readText(std::string& out) const {
  out.clear();
  if (value != nullptr) {
    out = LcpText(value).view();
  } else if (!missing) {
    std::cerr << "Attribute has not been built!" << std::endl;
  }
}

}  // namespace jexxml
