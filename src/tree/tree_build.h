// Building a tree of nodes over a document: the record of one build, the build itself, and the steps
// from which each node class composes its process().
#pragma once

#include "tree/child_node_list.h"
#include "tree/dom_navigation.h"
#include "tree/node_attribute.h"
#include "tree/nox_xml_node_interface.h"
#include "tree/xml_common_strings.h"

#include <concepts>
#include <iostream>
#include <memory>
#include <new>

namespace jexxml {

// One document and the tree over it. The tree refers to the document, which its parser owns, so it is
// destroyed first.
template <typename Root>
struct DocumentTree {
  DOMNode* document = nullptr;
  std::unique_ptr<Root> root;  // null until the build creates it
};

// For use in a handler: reports the exception that ended a build, by its kind.
void reportBuildException();

// Builds the tree over the document's first element, whatever its name; what stands before that
// element is stepped over. True when the tree may be read; a null root then stands for a document without content.
//
//   no document, or none of its nodes is an element   false, no root
//   no memory for the names; reported                 false, no root
//   the root's process() returned false; reported     false, with the root
//   an exception; reported                            true, with what was complete before
//
// REQUIRES: `tree.root` is null.
template <typename Root>
bool buildTree(DocumentTree<Root>& tree) {
  if (tree.document == nullptr) {
    return false;
  }
  const std::unique_ptr<const XmlCommonStrings> commonStrings(new (std::nothrow) XmlCommonStrings);
  if (commonStrings == nullptr) {
    std::cerr << "Error Allocating Common Strings" << std::endl;
    return false;
  }
  try {
    if (!tree.document->hasChildNodes()) {
      return true;
    }
    DOMNode* rootElement = firstElementChild(*tree.document);
    if (rootElement == nullptr) {
      return false;
    }
    tree.root = std::make_unique<Root>(rootElement, commonStrings.get());
    if (!tree.root->process()) {
      std::cerr << "Error Building KIV Root" << std::endl;
      return false;
    }
  } catch (...) {
    reportBuildException();
  }
  return true;
}

// The steps of a node's process(), to be joined with &&.

// Fetches the attributes. Returns true: an absent attribute is no failure.
bool fetch(std::same_as<NodeAttribute> auto&... attributes) {
  NodeAttribute::fetch({&attributes...});
  return true;
}

// Builds lists of the node in the order given; when one fails, writes the message and returns false.
template <typename... T>
bool build(const auto& node, const char* message, ChildNodeList<T>&... lists) {
  const bool built = (lists.build(node.domNode, node.commonStrings) && ...);
  if (!built) {
    std::cerr << message << std::endl;
  }
  return built;
}

}  // namespace jexxml
