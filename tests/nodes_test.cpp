// The node framework and the node classes over it.
#include "manifest/kiv_nodes.h"
#include "project/nox_nodes.h"

#include "support/captured_stderr.h"
#include "support/parsed_document.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace jexxml {
namespace {

TEST(NodeAttribute, TellsAbsentFromEmptyFromUnfetched) {
  const ParsedDocument parsed("<r path='p' name=''/>");
  const XmlCommonStrings strings;
  CapturedStderr captured;

  NodeAttribute present(parsed.root(), strings.get("path"));
  present.fetch();
  EXPECT_EQ(present.getText(), "p");
  EXPECT_EQ(present.nodeType, DOMNode::ATTRIBUTE_NODE);
  NodeAttribute empty(parsed.root(), strings.get("name"));
  empty.fetch();
  EXPECT_EQ(empty.getText(), "");
  EXPECT_FALSE(empty.missing);
  NodeAttribute absent(parsed.root(), strings.get("date"));
  absent.fetch();
  EXPECT_EQ(absent.getText(), "");
  EXPECT_TRUE(absent.missing);
  EXPECT_EQ(captured.take(), "");

  for (NodeAttribute unbound : {NodeAttribute(nullptr, strings.get("path")), NodeAttribute(parsed.root(), nullptr)}) {
    unbound.fetch();
    EXPECT_EQ(captured.take(), "\nOwner Node and Attribute Name Not Set!\n");
    EXPECT_EQ(unbound.getText(), "");
    EXPECT_EQ(unbound.getText(), "");
    EXPECT_EQ(captured.take(), "Attribute has not been built!\nAttribute has not been built!\n");
  }
}

TEST(ChildNodeList, HoldsMatchingChildrenInOrder) {
  const ParsedDocument parsed("<r>t<data path='1'/><x/><data path='2'/><!-- c --><data path='3'/></r>");
  const XmlCommonStrings strings;
  ChildNodeList<KivVpDataNode> list;
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

// What the classes write when they have no element.
struct Elementless {
  std::string messages;
  std::function<bool(const XmlCommonStrings*)> process;
};

template <typename Node>
Elementless elementless(const std::string& messages) {
  return {messages, [](const XmlCommonStrings* strings) { return Node(nullptr, strings).process(); }};
}

TEST(Nodes, ReportAMissingElement) {
  const std::string unset = "\nOwner Node and Attribute Name Not Set!\n";
  const Elementless failing[] = {
      elementless<KivRootNode>(""),
      elementless<KivNode>(""),
      elementless<KivRmNode>("Failed to build Root Macro Data Node List\n"),
      elementless<KivFmNode>("Failed to build Filemap Root Node List\n"),
      elementless<KivFmRootNode>(unset + "Failed to build Filemap Data Node List\n"),
      elementless<KivVpNode>("Failed to build Varnix Path Data Node List\n"),
      elementless<NoxRootNode>(""),
      elementless<NoxDependencyNode>("Failed processing Directory Node List\n"),
      elementless<NoxDirectoryNode>(""),
      elementless<NoxDevelopmentNode>(""),
      elementless<NoxRmNode>(""),
      elementless<NoxApNode>(""),
      elementless<NoxSecNode>(""),
      elementless<NoxExcludeNode>(""),
      elementless<NoxDeploymentNode>(""),
      elementless<NoxPmNode>(""),
      elementless<NoxDataNode>(""),
      elementless<NoxSecDataNode>(""),
  };
  const XmlCommonStrings strings;
  CapturedStderr captured;
  for (const Elementless& node : failing) {
    EXPECT_FALSE(node.process(&strings)) << node.messages;
    EXPECT_EQ(captured.take(), node.messages);
  }
  EXPECT_TRUE(KivVpDataNode(nullptr, &strings).process());
  EXPECT_EQ(captured.take(), unset);
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
