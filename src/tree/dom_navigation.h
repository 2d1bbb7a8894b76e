// Counts elements, and finds them by name among the children and siblings of a node.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

namespace jexxml {

using xercesc::DOMNode;

// A name to look for. Converts the name of a node and caches the last result, because siblings mostly share one name
// string.
class ElementName {
 public:
  ElementName(const char* name) : text(name) {}

  bool matches(const DOMNode& node) const;

  const char* text;  // not owned

 private:
  mutable const XMLCh* lastNodeName = nullptr;
  mutable bool lastMatched = false;
};

// A node matches a name if it is an element and its qualified name, in the locale encoding, has the same bytes. Other
// kinds of nodes are skipped. A null node, and a null or empty name, are reported on the standard error stream.

// The number of elements in the subtree of `node`, including `node`. -1 if `node` is null.
int CountAllChildElements(DOMNode* node);

// The number of direct children of `parent` that match. -1 if an argument is null or empty.
int CountDirectChildrenWithThisName(DOMNode* parent, const ElementName& name);

// The first direct child of `parent` that matches, or null.
DOMNode* GetFirstChildWithThisName(DOMNode* parent, const ElementName& name);

// The first sibling after `node` that matches, or null.
DOMNode* GetNextSiblingWithThisName(DOMNode* node, const ElementName& name);

// The first direct child of `parent` that is an element of any name, or null.
DOMNode* firstElementChild(const DOMNode& parent);

}  // namespace jexxml
