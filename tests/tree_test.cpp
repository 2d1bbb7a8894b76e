// The trees: navigation, attributes, and the dumps, which show the contents of the trees.
#include "description/vocabulary.h"
#include "document/parse_document.h"
#include "manifest/kiv_dump.h"
#include "project/nox_dump.h"
#include "support/captured_stderr.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <string>
#include <vector>

namespace jexxml {
namespace {

class Tree : public testing::Test {
 protected:
  void SetUp() override { xercesc::XMLPlatformUtils::Initialize(); }
  void TearDown() override {
    gParser.reset();
    gErrorReporter.reset();
    xercesc::XMLPlatformUtils::Terminate();
  }

  static xercesc::MemBufInputSource sourceOf(const std::string& text) {
    return {reinterpret_cast<const XMLByte*>(text.data()), text.size(), "JexXml"};
  }

  // Parses a document as a load does. It is valid until the next call.
  static DOMNode* parse(const std::string& text) {
    gParser.reset();
    return parseDocument(sourceOf(text), text.size());
  }

  CapturedStderr captured;
};

TEST_F(Tree, FindsAndCountsElementsByName) {
  const std::string text =
      "<r>data<data/><!--data--><?data p?><Data/><x:data xmlns:x='x'/><data><data/></data><o/></r>";
  xercesc::XercesDOMParser parser;  // its document has all kinds of nodes
  parser.parse(sourceOf(text));
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

TEST_F(Tree, TellsAbsentAttributesFromEmptyOnes) {
  DOMNode* root = firstElementChild(*parse("<r path='p' name=''><data/></r>"));
  const XmlCommonStrings strings;
  NodeAttribute present(root, strings.get("path"));
  NodeAttribute empty(root, strings.get("name"));
  NodeAttribute absent(root, strings.get("date"));
  for (NodeAttribute* attribute : {&present, &empty, &absent}) {
    attribute->fetch();
  }
  EXPECT_EQ(present.getText() + empty.getText() + absent.getText(), "p");
  EXPECT_TRUE(absent.missing && !empty.missing && !present.missing);
  EXPECT_TRUE(absent.nodeType == 0 && empty.nodeType == DOMNode::ATTRIBUTE_NODE && *empty.nodeName == u'n');
  ChildNodeList<KivVpDataNode> list("data");
  EXPECT_TRUE(list.build(root, &strings) && list.at(0) != nullptr && list.at(1) == nullptr && list.at(-1) == nullptr);
  EXPECT_EQ(captured.take(), "");
}

TEST_F(Tree, HasADocumentThatCannotBeChanged) {
  DOMNode* root = firstElementChild(*parse("<r a='1'/>"));
  EXPECT_THROW(root->appendChild(root), xercesc::DOMException);
  EXPECT_THROW(root->getParentNode(), xercesc::DOMException);
  EXPECT_THROW(root->getAttributes()->removeNamedItem(u"a"), xercesc::DOMException);
  EXPECT_THROW(root->getAttributes()->item(0)->setNodeValue(u"2"), xercesc::DOMException);
}

// Every kind of element, out of order, between elements and text that are to be skipped.
constexpr const char* project = R"(<any type="t">
  <security><exclude message="m"><data path="keys"/></exclude><exclude/></security>
  <dependency/>
  <!-- <dependency/> --><directory/><data/><Dependency/><x:dependency xmlns:x="x"/>
  <dependency>
    text<directory path="src"><data pathd="src/a" name="a"/><data name=""/></directory>
    <data/>
  </dependency>
  <development debug_level="1" debug_log="l" project="p">
    <addpath><data where="w" path="lib"/></addpath>
    <data/>
    <rootmacro><data name="N" abspath="/n"/></rootmacro>
    <rootmacro/>
  </development>
  <deployment application="app" debug_test="0"><pathmap><data front="/a" replace_by="/b"/></pathmap></deployment>
  <development/>
</any>)";

constexpr const char* projectDump = R"(
=================DEPENDENCY======================
#dependency:
#dependency:
##directory: path=src
###data: pathd=src/a name=a
###data: pathd= name=
=================================================
=================DEVELOPMENT=====================
#development: project=p debug_log=l debug_level=1
##rootmacro:
###rmdata: name=N abspath=/n
##rootmacro:
##addpath:
###apdata: path=lib where=w
#development: project= debug_log= debug_level=
===============================================
=================SECURITY======================
#security:
##exclude: message=m
###secdata: path=keys
##exclude: message=
===============================================
=================DEPLOYMENT=====================
#deployment: application=app debug_test=0
##pathmap:
###pmdata: front=/a replace_by=/b
==================================================)";

constexpr const char* manifest = R"(<any><kiv application="calc">
  <varnixpath><data path="bin"/></varnixpath><varnixpath/>
  <rootmacro><data name="start" abspath="/opt/calc/start"/></rootmacro><rootmacro/>
  <filemap><root path="lib"><data dir_name="lib" file_name="util" dir_rename="lib2"/></root><root/></filemap>
  <filemap/>
</kiv><kiv/></any>)";

constexpr const char* manifestDump = R"(
=======================KIV============================
#kiv: application=calc
##rootmacro: no of data nodes=1
###data: name=start abspath=/opt/calc/start
##rootmacro: no of data nodes=0
##filemap:
###root: path=lib
####data: dir_name=lib file_name=util dir_rename=lib2 file_rename=
###root: path=
##filemap:
##varnixpath:
###data: path=bin
##varnixpath:
#kiv: application=
=======================================================)";

TEST_F(Tree, IsDumpedInTheOrderOfItsSchema) {
  const auto expectDump = [this](const char* document, auto master, auto build, auto dump, const std::string& text) {
    master.document = parse(document);
    EXPECT_TRUE(build(master));
    EXPECT_EQ(captured.take(), "");
    EXPECT_TRUE(dump(master) && dump(master));
    EXPECT_EQ(captured.take(), text + text);
  };
  expectDump(project, NoxMaster(), buildNoxMaster, dumpNoxMaster, projectDump);
  expectDump(manifest, KivMaster(), buildKivMaster, dumpKivMaster, manifestDump);
}

// The element with all children that the schema declares. Every attribute that it declares has a value of its own,
// which is appended to `values`; every other name of the vocabularies is an attribute with the value "undeclared".
std::string documentOf(const tool::ElementKind& kind, std::vector<std::string>& values) {
  std::string element = "<" + kind.name;
  for (const auto& attribute : kind.attributes) {
    values.push_back("v" + std::to_string(values.size() + 100));
    element += " " + attribute.name + "='" + values.back() + "'";
  }
  for (const std::string name : xmlNames) {
    element += kind.attribute(std::u16string(name.begin(), name.end())) == nullptr ? " " + name + "='undeclared'" : "";
  }
  element += ">";
  for (const auto& child : kind.children) {
    element += documentOf(child, values);
  }
  return element + "</" + kind.name + ">";
}

// The dump shows all attributes but those of the root element.
TEST_F(Tree, HasTheAttributesThatItsSchemaDeclares) {
  const auto expectSchema = [this](const tool::ElementKind& kind, auto master, auto dump) {
    std::vector<std::string> values;
    master.document = parse(documentOf(kind, values));
    EXPECT_TRUE(buildTree(master) && dump(master));
    auto& root = *master.root;
    const std::string text =
        captured.take() + root.type.getText() + root.version.getText() + root.date.getText() + root.name.getText();
    for (const std::string& value : values) {
      EXPECT_NE(text.find(value), std::string::npos) << value << " is missing in " << text;
    }
    EXPECT_EQ(text.find("undeclared"), std::string::npos) << text;
  };
  expectSchema(tool::manifestVocabulary(), KivMaster(), dumpKivMaster);
  expectSchema(tool::projectVocabulary(), NoxMaster(), dumpNoxMaster);
}

}  // namespace
}  // namespace jexxml
