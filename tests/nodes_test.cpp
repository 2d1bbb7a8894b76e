// The node framework and the node classes over it.
#include "manifest/kiv_nodes.h"
#include "support/captured_stderr.h"
#include "support/parsed_document.h"

#include <gtest/gtest.h>

#include <string>

namespace jexxml {
namespace {

TEST(NodeAttribute, TellsAbsentFromEmptyFromUnfetched) {
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
  EXPECT_EQ(captured.take(), "");
  for (NodeAttribute unbound : {NodeAttribute(nullptr, strings.get("path")), NodeAttribute(parsed.root(), nullptr)}) {
    unbound.fetch();
    EXPECT_EQ(captured.take(), "\nOwner Node and Attribute Name Not Set!\n");
    EXPECT_EQ(unbound.getText() + unbound.getText(), "");
    EXPECT_EQ(captured.take(), "Attribute has not been built!\nAttribute has not been built!\n");
  }
}

TEST(ChildNodeList, HoldsMatchingChildrenInOrder) {
  const ParsedDocument parsed("<r>t<data path='1'/><x/><data path='2'/><!-- c --><data path='3'/></r>");
  const XmlCommonStrings strings;
  ChildNodeList<KivVpDataNode> list("data");
  EXPECT_EQ(list.at(0), nullptr);
  EXPECT_FALSE(list.build(nullptr, &strings));
  EXPECT_TRUE(list.build(parsed.root(), &strings));
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list.parent, parsed.root());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(list.at(i)->path.getText(), std::to_string(i + 1));
  }
  EXPECT_EQ(list.at(3), nullptr);
  EXPECT_EQ(list.at(-1), nullptr);
  EXPECT_TRUE(list.build(parsed.root(), &strings));
  EXPECT_EQ(list.size(), 6);
}

TEST(KivMaster, HasNoRootWithoutAnElement) {
  KivMaster none;
  EXPECT_FALSE(buildKivMaster(none));
  const ParsedDocument parsed("<r type='t'/>");
  KivMaster master{parsed.document, nullptr};
  EXPECT_TRUE(buildKivMaster(master));
  EXPECT_EQ(master.root->type.getText(), "t");
  EXPECT_EQ(master.root->kivNodeList.size(), 0);
}

}  // namespace
}  // namespace jexxml
