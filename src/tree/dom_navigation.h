// Walking a DOM: counting elements, and finding them by name among a node's children and siblings.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

namespace jexxml {

using xercesc::DOMNode;

// A name to look for. Converts each node's name, but caches the last conversion: a document pools its names, so that
// nodes in a row mostly share theirs.
class ElementName {
 public:
  ElementName(const char* name) : text(name) {}

  bool matches(const DOMNode& node) const;

  const char* text;  // not owned

 private:
  mutable const XMLCh* lastNodeName = nullptr;
  mutable bool lastMatched = false;
};

// A node matches a name when it is an element and its qualified name, in the local code page, is the same byte for
// byte. Nodes of other kinds are stepped over. A null node and a null or empty name are reported on the standard error
// stream.

// Elements in the subtree of `node`, itself included. -1 for a null node.
int CountAllChildElements(DOMNode* node);

// Direct children of `parent` that match. -1 for a null or empty argument.
int CountDirectChildrenWithThisName(DOMNode* parent, const ElementName& name);

// The first direct child of `parent` that matches, or null.
DOMNode* GetFirstChildWithThisName(DOMNode* parent, const ElementName& name);

// The first sibling after `node` that matches, or null.
DOMNode* GetNextSiblingWithThisName(DOMNode* node, const ElementName& name);

// The first direct child of `parent` that is an element of any name, or null.
DOMNode* firstElementChild(const DOMNode& parent);

}  // namespace jexxml
