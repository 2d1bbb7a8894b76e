// ChildNodeList: the nodes for an element's children of one name.
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
  // `name` is the children's.
  explicit ChildNodeList(XmlName name) : elementName(xmlNames[name.index]) {}

  // Creates, processes and appends a node for each child of `element` that is named so, in document
  // order. A child whose processing fails stays. False, without a message, for a null `element`.
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

  // Null when `index` is negative or not below size(). Valid until the list grows or is released.
  T* at(int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < nodes.size() ? &nodes[place] : nullptr;
  }

  auto begin() { return nodes.begin(); }
  auto end() { return nodes.end(); }
  auto begin() const { return nodes.begin(); }
  auto end() const { return nodes.end(); }

  const char* elementName;
  std::vector<T> nodes;       // side by side: a file map has very many
  DOMNode* parent = nullptr;  // not owned; null until built

 private:
  // A child whose processing throws does not stay.
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
