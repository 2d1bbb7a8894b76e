// Builds a tree of nodes over a document: the result of a build, the build itself, and the steps of process() in the
// node classes.
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

// A document and the tree over it. The parser owns the document. REQUIRES: the tree is destroyed before the parser.
template <typename Root>
struct DocumentTree {
  DOMNode* document = nullptr;
  std::unique_ptr<Root> root;  // null until the build creates it
};

// To be called in a catch handler: reports the exception that ended a build.
void reportBuildException();

// Builds the tree over the first element of the document, whatever its name. Returns true if the tree may be read; its
// root is null if the document is empty.
//
//   no document, or no element in the document        false, no root
//   out of memory for the names; reported             false, no root
//   the root's process() returned false; reported     false, with the root
//   an exception; reported                            true, with the part that was complete
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

// Fetches the attributes. Returns true, because an absent attribute is not a failure.
bool fetch(std::same_as<NodeAttribute> auto&... attributes) {
  NodeAttribute::fetch({&attributes...});
  return true;
}

// Builds the lists of the node in the given order. If a list fails, writes the message and returns false.
template <typename... T>
bool build(const auto& node, const char* message, ChildNodeList<T>&... lists) {
  const bool built = (lists.build(node.domNode, node.commonStrings) && ...);
  if (!built) {
    std::cerr << message << std::endl;
  }
  return built;
}

}  // namespace jexxml
