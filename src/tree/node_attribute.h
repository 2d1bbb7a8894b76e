// NodeAttribute: one XML attribute of a node's element.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include <initializer_list>
#include <memory>
#include <string>

namespace jexxml {

using xercesc::DOMNode;

// Looked up once by fetch, then read as text. Nothing that the pointers refer to is owned: the DOM document must
// outlive every use but destruction, and `attributeName` ends with the build.
struct NodeAttribute {
  // `element` may be null; `name` is an entry of the build's XmlCommonStrings.
  NodeAttribute(DOMNode* element, const XMLCh* name) : ownerNode(element), attributeName(name) {}

  // Looks the attribute up on its element. Without an element or a name it reports so and leaves the record unfilled.
  void fetch() { fetch({this}); }

  // The same for several attributes of one element, in one pass over those that it has.
  static void fetch(std::initializer_list<NodeAttribute*> attributes);

  // The value in the local code page; empty for an absent attribute, and for one that was never fetched, which is
  // reported at every call. A text that is not empty is kept and not converted again. The reference is valid until the
  // next call or the end of the record.
  const std::string& getText();

  // The text that getText has kept; empty if it has none.
  const std::string& keptText() const;

  // As getText, but into `out`, whose memory is used again, and without keeping the text here.
  void readText(std::string& out) const;

  const XMLCh* nodeName = nullptr;  // null until fetched
  int nodeType = 0;                 // a DOMNode::NodeType; 0 until fetched
  const XMLCh* value = nullptr;     // null until fetched, and when the attribute is absent
  DOMNode* ownerNode;
  const XMLCh* attributeName;
  bool missing = false;  // a lookup found no such attribute

  // On the heap: a file map has very many attributes, and getText is asked for few of them (bench: "peak of a load").
  std::unique_ptr<const std::string> text;

 private:
  bool isSet() const { return ownerNode != nullptr && attributeName != nullptr; }
  void take(const DOMNode& attribute);
};

}  // namespace jexxml
