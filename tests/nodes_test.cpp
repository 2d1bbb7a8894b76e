// DOM walking, and the node framework and the node classes over it.
#include "manifest/kiv_nodes.h"
#include "support/captured_stderr.h"
#include "support/parsed_document.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include <string>

namespace jexxml {
namespace {

TEST(DomNavigation, FindsAndCountsElementsByName) {
  const ParsedDocument parsed(
      "<r><data/><!--data--><?data p?><Data/><x:data xmlns:x='x'/><data><data/></data><o/></r>");
  DOMNode* root = parsed.root();
  root->insertBefore(root->getOwnerDocument()->createTextNode(u"data"), root->getFirstChild());
  EXPECT_EQ(CountDirectChildrenWithThisName(root, "data"), 2);
  DOMNode* first = GetFirstChildWithThisName(root, "data");
  DOMNode* second = GetNextSiblingWithThisName(first, "data");
  ASSERT_NE(second, nullptr);
  EXPECT_TRUE(second->hasChildNodes());
  EXPECT_EQ(GetNextSiblingWithThisName(second, "data"), nullptr);
  EXPECT_EQ(GetFirstChildWithThisName(first, "data"), nullptr);
  EXPECT_EQ(GetFirstChildWithThisName(root, "dat"), nullptr);
  EXPECT_EQ(CountDirectChildrenWithThisName(root, "x:data"), 1);
  EXPECT_EQ(CountAllChildElements(root), 7);
  EXPECT_EQ(CountAllChildElements(root->getFirstChild()), 0);
}

TEST(NodeAttribute, TellsAbsentFromEmpty) {
  const ParsedDocument parsed("<r path='p' name=''/>");
  const XmlCommonStrings strings;
  CapturedStderr captured;
  NodeAttribute present(parsed.root(), strings.get("path"));
  NodeAttribute empty(parsed.root(), strings.get("name"));
  NodeAttribute absent(parsed.root(), strings.get("date"));
  for (NodeAttribute* attribute : {&present, &empty, &absent}) {
    attribute->fetch();
  }
  EXPECT_EQ(present.getText() + empty.getText() + absent.getText(), "p");
  EXPECT_TRUE(absent.missing && !empty.missing && !present.missing);
  EXPECT_TRUE(absent.nodeType == 0 && empty.nodeType == DOMNode::ATTRIBUTE_NODE && *empty.nodeName == u'n');
  EXPECT_EQ(captured.take(), "");
}

TEST(ChildNodeList, HoldsMatchingChildrenInOrder) {
  const ParsedDocument parsed("<r>t<data path='1'/><x/><data path='2'/><!-- c --></r>");
  const XmlCommonStrings strings;
  ChildNodeList<KivVpDataNode> list("data");
  EXPECT_EQ(list.at(0), nullptr);
  EXPECT_TRUE(list.build(parsed.root(), &strings) && list.build(parsed.root(), &strings));
  std::string paths;
  for (auto& node : list) {
    paths += node.path.getText();
  }
  EXPECT_EQ(paths, "1212");
  EXPECT_EQ(list.at(list.size() - 1)->path.getText(), "2");
  EXPECT_TRUE(list.at(4) == nullptr && list.at(-1) == nullptr);
}

}  // namespace
}  // namespace jexxml
