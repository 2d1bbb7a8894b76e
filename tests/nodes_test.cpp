// DOM walking, and the attributes of nodes.
#include "support/captured_stderr.h"
#include "support/parsed_document.h"
#include "tree/node_attribute.h"
#include "tree/xml_common_strings.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

namespace jexxml {
namespace {

TEST(DomNavigation, FindsAndCountsElementsByName) {
  const std::string text =
      "<r>data<data/><!--data--><?data p?><Data/><x:data xmlns:x='x'/><data><data/></data><o/></r>";
  xercesc::XMLPlatformUtils::Initialize();
  {
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "test");
    xercesc::XercesDOMParser parser;  // whose document has nodes of all kinds
    parser.parse(source);
    DOMNode* root = parser.getDocument()->getFirstChild();
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
  xercesc::XMLPlatformUtils::Terminate();
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

}  // namespace
}  // namespace jexxml
