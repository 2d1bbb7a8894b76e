#include "xml/dom_navigation.h"

#include "support/captured_stderr.h"
#include "support/parsed_document.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

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

TEST(DomNavigation, ReportsMissingArguments) {
  const ParsedDocument parsed("<r/>");
  DOMNode* root = parsed.root();
  CapturedStderr captured;
  for (const auto& [node, name] : {std::pair(root, ""), {root, nullptr}, {nullptr, "data"}}) {
    EXPECT_EQ(CountDirectChildrenWithThisName(node, name), -1);
    EXPECT_EQ(GetFirstChildWithThisName(node, name), nullptr);
    EXPECT_EQ(GetNextSiblingWithThisName(node, name), nullptr);
    EXPECT_EQ(captured.take(),
              "CountDirectChildrenWithThisName: supplied parent node or name argument is null.\n"
              "GetFirstChildWithThisName: supplied parent node or name argument is null.\n"
              "GetNextSiblingWithThisName: supplied node or name argument is null.\n");
  }
  EXPECT_EQ(CountAllChildElements(nullptr), -1);
  EXPECT_EQ(captured.take(), "CountAllChildElements: supplied parent node argument is null.\n");
}

}  // namespace
}  // namespace jexxml
