// The diagnostic dumps, and through them what the trees hold.
#include "description/vocabulary.h"
#include "manifest/kiv_dump.h"
#include "project/nox_dump.h"
#include "support/captured_stderr.h"
#include "support/parsed_document.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace jexxml {
namespace {

// Every kind of element, out of order, among what is to be skipped.
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

TEST(Dump, ShowsTheProjectInTheOrderOfItsSchema) {
  CapturedStderr captured;
  const ParsedDocument parsed(project);
  NoxMaster master{parsed.document, nullptr};
  EXPECT_TRUE(buildNoxMaster(master));
  EXPECT_EQ(master.root->type.getText(), "t");
  EXPECT_EQ(captured.take(), "");
  EXPECT_TRUE(dumpNoxMaster(master) && dumpNoxMaster(master));
  EXPECT_EQ(captured.take(), std::string(projectDump) + projectDump);
}

TEST(Dump, ShowsTheManifestInTheOrderOfItsSchema) {
  CapturedStderr captured;
  const ParsedDocument parsed(manifest);
  KivMaster master{parsed.document, nullptr};
  EXPECT_TRUE(buildKivMaster(master));
  EXPECT_EQ(captured.take(), "");
  EXPECT_TRUE(master.root->kivNodeList.at(2) == nullptr && master.root->kivNodeList.at(-1) == nullptr);
  EXPECT_TRUE(dumpKivMaster(master) && dumpKivMaster(master));
  EXPECT_EQ(captured.take(), std::string(manifestDump) + manifestDump);
}

// The element with all that the schema declares in it, and a value of its own in every attribute. Notes the size of a
// node with such members, then of those below it.
std::string documentOf(const tool::ElementKind& kind, std::vector<std::string>& values,
                       std::vector<std::size_t>& sizes) {
  sizes.push_back(sizeof(NoxXmlNodeInterface) + kind.attributes.size() * sizeof(NodeAttribute) +
                  kind.children.size() * sizeof(ChildNodeList<KivNode>));
  std::string element = "<" + kind.name;
  for (const auto& attribute : kind.attributes) {
    values.push_back("=v" + std::to_string(values.size() + 100));
    element += " " + attribute.name + "='" + values.back().substr(1) + "'";
  }
  element += ">";
  for (const auto& child : kind.children) {
    element += documentOf(child, values, sizes);
  }
  return element + "</" + kind.name + ">";
}

// The node classes, in the order of the schema, have a member for each attribute and each kind of child that it
// declares, and no other; the dump shows each attribute but those of the root element.
template <typename Root, typename... Nodes>
void expectAllDumped(const tool::ElementKind& kind, bool (*dump)(DocumentTree<Root>&)) {
  CapturedStderr captured;
  std::vector<std::string> values;
  std::vector<std::size_t> sizes;
  const ParsedDocument parsed(documentOf(kind, values, sizes));
  EXPECT_EQ((std::vector{sizeof(Root), sizeof(Nodes)...}), sizes);
  DocumentTree<Root> master{parsed.document, nullptr};
  EXPECT_TRUE(buildTree(master) && dump(master));
  const std::string text = captured.take();
  for (const std::string& value : std::span(values).subspan(kind.attributes.size())) {
    EXPECT_NE(text.find(value), std::string::npos) << value << " is missing in " << text;
  }
}

TEST(Dump, HasWhatTheSchemasDeclare) {
  xercesc::XMLPlatformUtils::Initialize();
  expectAllDumped<KivRootNode, KivNode, KivRmNode, KivRmDataNode, KivFmNode, KivFmRootNode, KivFmDataNode, KivVpNode,
                  KivVpDataNode>(tool::manifestVocabulary(), dumpKivMaster);
  expectAllDumped<NoxRootNode, NoxDependencyNode, NoxDirectoryNode, NoxDataNode, NoxDevelopmentNode, NoxRmNode,
                  NoxRmDataNode, NoxApNode, NoxApDataNode, NoxSecNode, NoxExcludeNode, NoxSecDataNode,
                  NoxDeploymentNode, NoxPmNode, NoxPmDataNode>(tool::projectVocabulary(), dumpNoxMaster);
  xercesc::XMLPlatformUtils::Terminate();
}

}  // namespace
}  // namespace jexxml
