// Loads manifests and checks projects with the exported functions of the shared library.
#include "support/manifest_load.h"
#include "support/thread_locale.h"

#include <string>

namespace {

std::string inKiv(const std::string& content) { return "<doc_root><kiv>" + content + "</kiv></doc_root>"; }

std::string file(const std::string& attributes) {
  return inKiv("<filemap><root path='r'><data dir_name='d' file_name='f' " + attributes + "/></root></filemap>");
}

TEST_F(ManifestLoad, ComposesTheRecord) {
  expectRecord("<any version='1'/>", "");
  expectRecord(inKiv("<rootmacro><data name='N' abspath='/a'/></rootmacro>"
                     "<rootmacro><data name='N' abspath='/b'/></rootmacro>"),
               "N = /b\n");
  expectRecord(inKiv("<rootmacro><data abspath='/a'/></rootmacro>"), " = /a\n");
  expectRecord(file(""), "r/d/f -> d/f\n");
  expectRecord(file("dir_rename='D'"), "r/d/f -> D/f\n");
  expectRecord(file("file_rename='F'"), "r/d/f -> d/F\n");
  expectRecord(file("dir_rename='D' file_rename='F'"), "r/d/f -> D/F\n");
  expectRecord(file("dir_rename='' file_rename=''"), "r/d/f -> d/f\n");
  expectRecord(inKiv("<filemap><root><data file_name='x'/></root><root path='r'/></filemap><filemap/>"), "//x -> /x\n");
  expectRecord(inKiv("<filemap><root path='/a/'><data dir_name='../b' file_name=' c '/></root></filemap>"),
               "/a//../b/ c  -> ../b/ c \n");
  expectRecord(inKiv("<filemap><root path='a/b'><data dir_name='c' file_name='f' file_rename='first'/></root>"
                     "<root path='a'><data dir_name='b/c' file_name='f' file_rename='last'/></root></filemap>"),
               "a/b/c/f -> b/c/last\n");
  std::string sameSource = "<data dir_name='d' file_name='z' dir_rename='D' file_rename='Z'/>";
  for (const char last : std::string_view("0123456789abcdefghijklmnopqrstuvwxyzABCDEFG")) {
    sameSource += std::string("<data file_name='f' file_rename='") + last + "'/>";
  }
  expectRecord(inKiv("<filemap><root>" + sameSource + "<data file_name='a'/></root></filemap>"),
               "//a -> /a\n//f -> /G\n/d/z -> D/Z\n");
  expectRecord(inKiv("<varnixpath><data path='b'/><data path='b'/><data path=''/></varnixpath>"
                     "<varnixpath><data path='a'/><data path='b'/></varnixpath>"),
               "b\nb\n\na\nb\n");
  expectRecord(
      inKiv("<rootmacro><data name='N' abspath='1'/></rootmacro><varnixpath><data path='z'/></varnixpath></kiv>"
            "<kiv><varnixpath><data path='a'/></varnixpath><rootmacro><data name='N' abspath='2'/></rootmacro>"),
      "N = 2\nz\na\n");
}

TEST_F(ManifestLoad, SkipsUnknownContent) {
  expectRecord(
      inKiv("<data path='1'/><kiv><varnixpath><data path='2'/></varnixpath></kiv>"
            "<VARNIXPATH><data path='3'/></VARNIXPATH>"
            "<x:varnixpath xmlns:x='x'><data path='4'/></x:varnixpath><varnixpath>text<!-- c --><Data path='5'/>"
            "<data path='6'><data path='7'/></data><?p i?></varnixpath>"),
      "6\n");
  expectRecord(
      "<?xml version='1.0'?><!-- c --><?p i?><!DOCTYPE any [<!ELEMENT any ANY><!ELEMENT kiv ANY>"
      "<!ELEMENT varnixpath ANY><!ELEMENT data EMPTY><!ATTLIST data path CDATA #IMPLIED>"
      "<!ENTITY e \"<data path='out of an entity'/>\">]>"
      "<any><kiv><varnixpath>&e;<data path='1'/></varnixpath></kiv></any>",
      "1\n");
  expectRecord("<!DOCTYPE any [<!ELEMENT any ANY><!ATTLIST any a CDATA 'a warning' a CDATA #IMPLIED>]><any/>", "");
}

TEST_F(ManifestLoad, ReportsErrorsInADocument) {
  expectMessages("", "Nothing to read!\nError building input source\n");
  expectMessages("<doc_root>\n<kiv>\n</doc_root>",
                 "Fatal Error at file \"JexXml\", line 3, column 3\n"
                 "   Message: expected end of tag 'kiv'\n"
                 "Error buiding DOM\n");
  expectMessages("<a/><b/>",
                 "Fatal Error at file \"JexXml\", line 1, column 5\n"
                 "   Message: comment or processing instruction expected\n"
                 "Error buiding DOM\n");
  expectMessages("<!DOCTYPE a [<!ELEMENT a EMPTY>]><a b='1'><c/></a>",
                 "Error at file \"JexXml\", line 1, column 43\n"
                 "   Message: attribute 'b' is not declared for element 'a'\n"
                 "Error at file \"JexXml\", line 1, column 47\n"
                 "   Message: no declaration found for element 'c'\n"
                 "Error at file \"JexXml\", line 1, column 51\n"
                 "   Message: element 'c' is not allowed for content model 'EMPTY'\n"
                 "Error buiding DOM\n");
  expectMessages("<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a/>",
                 "Fatal Error at file \"JexXml\", line 1, column 43\n"
                 "   Message: unable to open DTD document 'file:///etc/hostname'\n"
                 "Error buiding DOM\n");
  expectMessages("<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e SYSTEM 'http://127.0.0.1:9/x'>]><a>&e;</a>",
                 "Fatal Error at file \"JexXml\", line 1, column 79\n"
                 "   Message: unable to open external entity 'http://127.0.0.1:9/x'\n"
                 "Error buiding DOM\n");
}

TEST_F(ManifestLoad, ReportsUnreadableFiles) {
  for (const char* fileName : {"", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(loadFile(fileName), "");
    EXPECT_EQ(captured.take(), "Parameter Error!\nError building input source\n");
  }
  EXPECT_EQ(loadFile("missing"), "");
  EXPECT_EQ(captured.take(), "Could not open file: missing\nError building input source\n");
}

TEST_F(ManifestLoad, ReturnsRecordsThatTheCallerOwns) {
  const std::string first = directory.write("first.xml", good);
  const std::string second =
      directory.write("second.xml", "<r><kiv><varnixpath><data path='there'/></varnixpath></kiv></r>");
  KIVData* here = nullptr;
  KIVData* there = nullptr;
  InitKIVData(first.c_str(), &here);
  InitKIVData(second.c_str(), &there);
  KIVData* inUse = here;
  EXPECT_EQ(InitKIVData("missing", &inUse), 0);
  EXPECT_EQ(inUse, here);
  EXPECT_EQ(here->varnixPath, std::vector<std::string>{"here"});
  EXPECT_TRUE(TermKIVData(&here) == 1 && here == nullptr && TermKIVData(&here) == 1);
  EXPECT_EQ(there->varnixPath, std::vector<std::string>{"there"});
  TermKIVData(&there);
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ManifestLoad, ReadsEveryEncodingAndReturnsTheLocaleEncoding) {
  std::string utf16("\xFF\xFE", 2);
  std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  for (const char unit : inKiv("<varnixpath><data path='caf\xE9'/></varnixpath>")) {
    utf16 += {unit, '\0'};
    latin1 += unit;
  }
  for (const std::string& document : {inKiv("<varnixpath><data path='caf\u00E9'/></varnixpath>"), utf16, latin1}) {
    expectRecord(document, "caf\u00E9\n");
    const ThreadLocale locale("test.ISO-8859-1");
    expectRecord(document, "caf\xE9\n");
  }
}

class ProjectLoad : public ManifestLoad {
 protected:
  // The next load of a manifest is not affected.
  void expectProjectMessages(const std::string& file, const std::string& messages) {
    void* handle = nullptr;
    EXPECT_EQ(InitNOXData(file.c_str(), &handle), 0);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(captured.take(), messages);
    expectRecord(good, "here\n");
  }
};

TEST_F(ProjectLoad, ReportsOnlyErrors) {
  expectProjectMessages(EXAMPLES "/project.xml", "");
  expectProjectMessages(directory.write("broken.xml", "<r>"),
                        "Fatal Error at file \"JexXml\", line 1, column 4\n   Message: input ended before all started "
                        "tags were ended; last tag started is 'r'\nError buiding DOM\n");
  expectProjectMessages("missing", "Could not open file: missing\nError building input source\n");
}

TEST_F(ProjectLoad, DoesNotWriteAHandleInUse) {
  void* handle = this;
  EXPECT_EQ(InitNOXData("missing", &handle), 0);
  EXPECT_EQ(handle, this);
  EXPECT_EQ(captured.take(), "");
  EXPECT_TRUE(TermNOXData(&handle) == 1 && handle == nullptr && TermNOXData(&handle) == 1);
}

TEST(Record, CopiesAnOwnedText) {
  FileMapEntry entry;
  EXPECT_TRUE(entry.holder.isDefault && entry.holder.str == nullptr && !entry.holder.owned);
  entry.holder.set("text", true);
  entry.holder.isDefault = false;
  const FileMapEntry& itself = entry;
  entry = itself;
  FileMapEntry copy(entry);
  EXPECT_FALSE(copy.holder.isDefault);
  entry.holder.set(entry.holder.str + 1, true);
  EXPECT_STREQ(entry.holder.str, "ext");
  EXPECT_STREQ(copy.holder.str, "text");
  copy = FileMapEntry();
  EXPECT_TRUE(copy.holder.isDefault && copy.holder.str == nullptr);
}

}  // namespace
