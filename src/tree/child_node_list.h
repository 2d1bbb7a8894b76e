// ChildNodeList: the nodes for the children of an element that have a given name.
#pragma once

#include "tree/dom_navigation.h"
#include "tree/xml_common_strings.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace jexxml {

// T is a node class. Owns its nodes.
template <typename T>
struct ChildNodeList {
  // `name` is the name of the children.
  explicit ChildNodeList(XmlName name) : elementName(xmlNames[name.index]) {}

  // Creates, processes and appends a node for each child of `element` with that name, in document order. A node stays
  // in the list if its process() returns false. Returns false, without a message, if `element` is null.
  bool build(DOMNode* element, const XmlCommonStrings* commonStrings) {
    if (element == nullptr) {
      return false;
    }
    parent = element;
    const ElementName name(elementName);
    DOMNode* current = GetFirstChildWithThisName(parent, name);
    const int count = CountDirectChildrenWithThisName(parent, name);
    nodes.reserve(nodes.size() + static_cast<std::size_t>(std::max(count, 0)));
    for (int i = 0; i < count; ++i) {
      append(current, commonStrings);
      current = GetNextSiblingWithThisName(current, name);
    }
    return true;
  }

  // Destroys the nodes and frees their memory.
  void release() { std::vector<T>().swap(nodes); }

  int size() const { return static_cast<int>(nodes.size()); }

  // The node at `index`; null if there is none. Valid until the list grows or is released.
  T* at(int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < nodes.size() ? &nodes[place] : nullptr;
  }

  auto begin() { return nodes.begin(); }
  auto end() { return nodes.end(); }
  auto begin() const { return nodes.begin(); }
  auto end() const { return nodes.end(); }

  const char* elementName;
  std::vector<T> nodes;       // contiguous, because a file map has very many
  DOMNode* parent = nullptr;  // not owned; null until built

 private:
  // Removes the node again if its process() throws.
  void append(DOMNode* element, const XmlCommonStrings* commonStrings) {
    nodes.emplace_back(element, commonStrings);
    try {
      nodes.back().process();
    } catch (...) {
      nodes.pop_back();
      throw;
    }
  }
};

}  // namespace jexxml
