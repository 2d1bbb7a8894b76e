#include "tree/node_attribute.h"

#include "text/lcp_text.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/util/XMLString.hpp>

#include <iostream>
#include <utility>

namespace jexxml {

using xercesc::XMLString;

void NodeAttribute::fetch(std::initializer_list<NodeAttribute*> attributes) {
  const DOMNode* element = nullptr;
  for (NodeAttribute* wanted : attributes) {
    if (wanted->isSet()) {
      element = wanted->ownerNode;
      wanted->missing = true;
    } else {
      std::cerr << '\n' << "Owner Node and Attribute Name Not Set!" << std::endl;
    }
  }
  if (element == nullptr) {
    return;
  }
  const xercesc::DOMNamedNodeMap& present = *element->getAttributes();
  const XMLSize_t count = present.getLength();
  for (XMLSize_t i = 0; i < count; ++i) {
    const DOMNode& attribute = *present.item(i);
    const XMLCh* name = attribute.getNodeName();
    for (NodeAttribute* wanted : attributes) {
      if (wanted->isSet() && XMLString::equals(name, wanted->attributeName)) {
        wanted->take(attribute);
        break;
      }
    }
  }
}

void NodeAttribute::take(const DOMNode& attribute) {
  missing = false;
  nodeName = attribute.getNodeName();
  nodeType = attribute.getNodeType();
  value = attribute.getNodeValue();
}

const std::string& NodeAttribute::getText() {
  if (text == nullptr) {
    std::string converted;
    readText(converted);
    if (!converted.empty()) {
      text = std::make_unique<const std::string>(std::move(converted));
    }
  }
  return cachedText();
}

const std::string& NodeAttribute::cachedText() const {
  static const std::string none;
  return text == nullptr ? none : *text;
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
