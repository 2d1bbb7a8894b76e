// NodeAttribute: one XML attribute of a node's element.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include <initializer_list>
#include <memory>
#include <string>

namespace jexxml {

using xercesc::DOMNode;

// fetch looks the attribute up once; then the text can be read. The pointers own nothing: the document must outlive
// every use except destruction, and `attributeName` is valid only during the build.
struct NodeAttribute {
  // `name` is an entry of the XmlCommonStrings of the build. `element` and `name` may be null.
  NodeAttribute(DOMNode* element, const XMLCh* name) : ownerNode(element), attributeName(name) {}

  // Looks the attribute up in its element. If the element or the name is null, reports an error and changes nothing.
  void fetch() { fetch({this}); }

  // Does the same for several attributes of one element, in one pass over the attributes of the element.
  static void fetch(std::initializer_list<NodeAttribute*> attributes);

  // The value in the locale encoding. Empty if the attribute is absent. If it was never fetched, every call reports an
  // error and returns an empty text. A text that is not empty is cached. The reference is valid until the next call or
  // the destruction of this object.
  const std::string& getText();

  // The text that getText has cached; empty if there is none.
  const std::string& cachedText() const;

  // Does what getText does, but stores the text in `out`, whose memory it reuses, and does not cache it.
  void readText(std::string& out) const;

  const XMLCh* nodeName = nullptr;  // null until fetched
  int nodeType = 0;                 // a DOMNode::NodeType; 0 until fetched
  const XMLCh* value = nullptr;     // null until fetched, and when the attribute is absent
  DOMNode* ownerNode;
  const XMLCh* attributeName;
  bool missing = false;  // fetch found no such attribute

  // On the heap, because a file map has very many attributes and getText is called for few (bench: "peak of a load").
  std::unique_ptr<const std::string> text;

 private:
  bool isSet() const { return ownerNode != nullptr && attributeName != nullptr; }
  void take(const DOMNode& attribute);
};

}  // namespace jexxml
