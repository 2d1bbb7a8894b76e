// NoxXmlNodeInterface: the base of every node class of the two trees.
//
// A node class derives directly and publicly from NoxXmlNodeInterface, and inherits the constructor. Its members are,
// in this order, one NodeAttribute for each attribute and one ChildNodeList for each kind of child. The initialisers of
// these members use the two members of the base, which come first in memory.
#pragma once

#include "tree/xml_common_strings.h"

#include <xercesc/dom/DOMNode.hpp>

namespace jexxml {

class NoxXmlNodeInterface {
 public:
  NoxXmlNodeInterface(xercesc::DOMNode* element, const XmlCommonStrings* strings)
      : domNode(element), commonStrings(strings) {}

  // Fetches the attributes of the node and builds its lists of children, and so its whole subtree. Called once, during
  // the build. Writes problems to the standard error stream. Returns false if the node has no element. Only the build
  // of the root uses the result.
  virtual bool process() = 0;

  xercesc::DOMNode* domNode;              // the element; not owned
  const XmlCommonStrings* commonStrings;  // of the running build; not owned

 protected:
  // Not virtual, because no node is destroyed through a pointer to this class.
  ~NoxXmlNodeInterface() = default;
};

}  // namespace jexxml
