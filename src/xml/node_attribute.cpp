#include "xml/node_attribute.h"

#include "xml/lcp_text.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <iostream>

namespace jexxml {

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
  value = static_cast<const xercesc::DOMAttr*>(attribute)->getValue();
}

const std::string& NodeAttribute::getText() {
  if (value == nullptr && !missing) {
    std::cerr << "Attribute has not been built!" << std::endl;
  } else if (text.empty() && !missing) {
    text = LcpText(value).view();
  }
  return text;
}

}  // namespace jexxml
