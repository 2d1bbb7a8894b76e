// NoxXmlNodeInterface: what every node class of the two document trees is.
//
// A node class derives directly and publicly from it, and holds, in this order: one NodeAttribute for each attribute,
// one ChildNodeList for each kind of child. The two members before these, which all classes have, stand here, so that
// no class repeats them and a constructor for them: each inherits the one below, and the initialisers of its own
// members, which run after it, refer to them. In memory they come first, as they would in the class itself.
#pragma once

#include "tree/xml_common_strings.h"

#include <xercesc/dom/DOMNode.hpp>

namespace jexxml {

class NoxXmlNodeInterface {
 public:
  NoxXmlNodeInterface(xercesc::DOMNode* element, const XmlCommonStrings* strings)
      : domNode(element), commonStrings(strings) {}

  // Fetches the node's attributes and builds its lists of children, and with them its whole subtree.
  // Called once, during the build. Problems are written to the standard error stream; false when the
  // node has no element, which a parent does not look at.
  virtual bool process() = 0;

  xercesc::DOMNode* domNode;              // the element; not owned
  const XmlCommonStrings* commonStrings;  // of the running build; not owned

 protected:
  // Nodes are destroyed as their own class only, so the destructor is not virtual.
  ~NoxXmlNodeInterface() = default;
};

}  // namespace jexxml
