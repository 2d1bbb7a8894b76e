// Loading manifests through the exported functions of the shared library.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"
#include "support/thread_locale.h"

#include <gtest/gtest.h>
#include <qzjexxml/qzjexxml.h>

#include <memory>
#include <string>

namespace {

struct Release {
  void operator()(KIVData* record) const { TermKIVData(&record); }
};
using Record = std::unique_ptr<KIVData, Release>;

// The record as text, a line an entry: "NAME = path", "source -> target", "search path".
std::string describe(const KIVData& record) {
  std::string text;
  for (const auto& [name, path] : record.rootMacros) {
    text += name + " = " + path + '\n';
  }
  for (const auto& [source, entry] : record.fileMap) {
    text += source + " -> " + entry.target + '\n';
    EXPECT_FALSE(entry.holder.isDefault);
    EXPECT_EQ(entry.holder.str, nullptr);
    EXPECT_FALSE(entry.holder.owned);
  }
  for (const auto& path : record.varnixPath) {
    text += path + '\n';
  }
  EXPECT_TRUE(record.reservedStrings.empty());
  return text;
}

class ManifestLoad : public testing::Test {
 protected:
  Record load(const char* fileName) {
    KIVData* handle = nullptr;
    EXPECT_EQ(InitKIVData(fileName, &handle), 1);
    return Record(handle);
  }

  Record loadText(std::string_view document) { return load(folder.write("manifest.xml", document).c_str()); }

  ScratchFolder folder;
  CapturedStderr captured;
};

struct Composition {
  const char* name;
  const char* kivContent;  // of the element "kiv"
  const char* record;
};

void PrintTo(const Composition& composition, std::ostream* stream) { *stream << composition.name; }

class ManifestRecord : public ManifestLoad, public testing::WithParamInterface<Composition> {};

TEST_P(ManifestRecord, IsComposedOf) {
  const Record record = loadText("<doc_root><kiv>" + std::string(GetParam().kivContent) + "</kiv></doc_root>");
  EXPECT_EQ(describe(*record), GetParam().record);
  EXPECT_EQ(captured.take(), "");
}

const Composition compositions[] = {
    {"Nothing", "", ""},
    {"LastRootMacro",
     "<rootmacro><data name='TOP' abspath='/a'/></rootmacro><rootmacro><data name='TOP' abspath='/b'/></rootmacro>",
     "TOP = /b\n"},
    {"NamelessRootMacro", "<rootmacro><data abspath='/a'/></rootmacro>", " = /a\n"},
    {"FileUnderItsOwnName", "<filemap><root path='/opt/app'><data dir_name='bin' file_name='run'/></root></filemap>",
     "/opt/app/bin/run -> bin/run\n"},
    {"DirRename", "<filemap><root path='r'><data dir_name='d' file_name='f' dir_rename='D'/></root></filemap>",
     "r/d/f -> D/f\n"},
    {"FileRename", "<filemap><root path='r'><data dir_name='d' file_name='f' file_rename='F'/></root></filemap>",
     "r/d/f -> d/F\n"},
    {"BothRenames",
     "<filemap><root path='r'><data dir_name='d' file_name='f' dir_rename='D' file_rename='F'/></root></filemap>",
     "r/d/f -> D/F\n"},
    {"EmptyRenames",
     "<filemap><root path='r'><data dir_name='d' file_name='f' dir_rename='' file_rename=''/></root></filemap>",
     "r/d/f -> d/f\n"},
    {"OnlyAFileName", "<filemap><root><data file_name='x'/></root></filemap>", "//x -> /x\n"},
    {"PathsAsTheyStand", "<filemap><root path='/a/'><data dir_name='../b' file_name=' c '/></root></filemap>",
     "/a//../b/ c  -> ../b/ c \n"},
    {"LastTarget",
     "<filemap><root path='a/b'><data dir_name='c' file_name='f' file_rename='first'/></root>"
     "<root path='a'><data dir_name='b/c' file_name='f' file_rename='last'/></root></filemap>",
     "a/b/c/f -> b/c/last\n"},
    {"RootWithoutFiles", "<filemap><root path='r'/></filemap><filemap/>", ""},
    {"SearchPathInOrder",
     "<varnixpath><data path='b'/><data path=''/></varnixpath><varnixpath><data path='a'/><data "
     "path='b'/></varnixpath>",
     "b\n\na\nb\n"},
    {"SecondKivElementWins",
     "<rootmacro><data name='N' abspath='1'/></rootmacro><varnixpath><data path='z'/></varnixpath></kiv>"
     "<kiv><varnixpath><data path='a'/></varnixpath><rootmacro><data name='N' abspath='2'/></rootmacro>",
     "N = 2\nz\na\n"},
    {"OnlyWhatStandsAtItsPlace",
     "<data path='1'/><kiv><varnixpath><data path='2'/></varnixpath></kiv><VARNIXPATH><data path='3'/></VARNIXPATH>"
     "<x:varnixpath xmlns:x='x'><data path='4'/></x:varnixpath><varnixpath>text<!-- c --><Data path='5'/>"
     "<data path='6'><data path='7'/></data><?p i?></varnixpath>",
     "6\n"},
};

INSTANTIATE_TEST_SUITE_P(Rules, ManifestRecord, testing::ValuesIn(compositions),
                         [](const auto& instance) { return instance.param.name; });

constexpr const char* goodManifest = "<any><kiv><varnixpath><data path='here'/></varnixpath></kiv></any>";

TEST_F(ManifestLoad, StepsOverWhatStandsBeforeTheRoot) {
  const Record record = loadText(
      "<?xml version='1.0'?><!-- c --><?p i?><!DOCTYPE any [<!ELEMENT any ANY>"
      "<!ELEMENT kiv ANY>]><any><kiv/></any>");
  EXPECT_EQ(captured.take(), "");
  EXPECT_EQ(describe(*loadText("<!-- c -->" + std::string(goodManifest))), "here\n");
  EXPECT_EQ(describe(*loadText("<any version='1'/>")), "");
  EXPECT_EQ(captured.take(), "");
}

struct Failure {
  const char* name;
  const char* document;  // null: a missing file
  const char* messages;  // FILE stands for the file's name
};

void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.name; }

class ManifestFailure : public ManifestLoad, public testing::WithParamInterface<Failure> {};

// A good load comes before, and another after, so that nothing of one load can reach the next.
TEST_P(ManifestFailure, SaysWhyAndGivesAnEmptyRecord) {
  const Record before = loadText(goodManifest);
  const std::string file =
      GetParam().document == nullptr ? folder.path("missing") : folder.write("bad.xml", GetParam().document);
  std::string expected = GetParam().messages;
  if (const auto place = expected.find("FILE"); place != std::string::npos) {
    expected.replace(place, 4, file);
  }
  const Record record = load(file.c_str());
  EXPECT_EQ(captured.take(), expected);
  EXPECT_EQ(describe(*record), "");
  EXPECT_EQ(describe(*loadText(goodManifest)), "here\n");
  EXPECT_EQ(describe(*before), "here\n");
  EXPECT_EQ(captured.take(), "");
}

const Failure failures[] = {
    {"MissingFile", nullptr, "Could not open file: FILE\nError building input source\n"},
    {"EmptyFile", "", "Nothing to read!\nError building input source\n"},
    {"MissingEndTag", "<doc_root>\n<kiv>\n</doc_root>",
     "Fatal Error at file \"JexXml\", line 3, column 3\n"
     "   Message: expected end of tag 'kiv'\n"
     "Error buiding DOM\n"},
    {"TwoRoots", "<a/><b/>",
     "Fatal Error at file \"JexXml\", line 1, column 5\n"
     "   Message: comment or processing instruction expected\n"
     "Error buiding DOM\n"},
    {"InvalidByItsDtd", "<!DOCTYPE a [<!ELEMENT a EMPTY>]><a b='1'><c/></a>",
     "Error at file \"JexXml\", line 1, column 43\n"
     "   Message: attribute 'b' is not declared for element 'a'\n"
     "Error at file \"JexXml\", line 1, column 47\n"
     "   Message: no declaration found for element 'c'\n"
     "Error at file \"JexXml\", line 1, column 51\n"
     "   Message: element 'c' is not allowed for content model 'EMPTY'\n"
     "Error buiding DOM\n"},
    {"ExternalDtd", "<!DOCTYPE a SYSTEM 'file:///etc/hostname'><a/>",
     "Fatal Error at file \"JexXml\", line 1, column 43\n"
     "   Message: unable to open DTD document 'file:///etc/hostname'\n"
     "Error buiding DOM\n"},
    {"ExternalEntity", "<!DOCTYPE a [<!ELEMENT a ANY><!ENTITY e SYSTEM 'http://127.0.0.1:9/x'>]><a>&e;</a>",
     "Fatal Error at file \"JexXml\", line 1, column 79\n"
     "   Message: unable to open external entity 'http://127.0.0.1:9/x'\n"
     "Error buiding DOM\n"},
};

INSTANTIATE_TEST_SUITE_P(Rows, ManifestFailure, testing::ValuesIn(failures),
                         [](const auto& instance) { return instance.param.name; });

TEST_F(ManifestLoad, RefusesAFileNameThatIsNone) {
  for (const char* fileName : {"", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(describe(*load(fileName)), "");
    EXPECT_EQ(captured.take(), "Parameter Error!\nError building input source\n");
  }
}

TEST_F(ManifestLoad, RefusesAHandleInUse) {
  const Record record = loadText(goodManifest);
  KIVData* handle = record.get();
  EXPECT_EQ(InitKIVData("missing", &handle), 0);
  EXPECT_EQ(handle, record.get());
  EXPECT_EQ(describe(*record), "here\n");
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ManifestLoad, KeepsTwoRecordsApart) {
  Record first = loadText(goodManifest);
  const Record second = loadText("<r><kiv><varnixpath><data path='there'/></varnixpath></kiv></r>");
  EXPECT_EQ(describe(*first), "here\n");
  KIVData* handle = first.release();
  EXPECT_EQ(TermKIVData(&handle), 1);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(TermKIVData(&handle), 1);
  EXPECT_EQ(describe(*second), "there\n");
}

// One document, in three encodings of the file, read in three code pages.
constexpr const char* manifestWithNames =
    "<r><kiv><varnixpath><data path='caf\u00E9'/><data path='\u00FC'/></varnixpath></kiv></r>";

TEST_F(ManifestLoad, ReadsEveryEncodingOfTheFile) {
  std::string utf16("\xFF\xFE", 2);
  std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  for (const char unit :
       std::string("<r><kiv><varnixpath><data path='caf\xE9'/><data path='\xFC'/></varnixpath></kiv></r>")) {
    utf16 += {unit, '\0'};
    latin1 += unit;
  }
  for (const std::string& document : {std::string(manifestWithNames), utf16, latin1}) {
    EXPECT_EQ(describe(*loadText(document)), "caf\u00E9\n\u00FC\n");
  }
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ManifestLoad, GivesNamesInTheThreadsCodePage) {
  EXPECT_EQ(describe(*loadText(manifestWithNames)), "caf\u00E9\n\u00FC\n");
  {
    const ThreadLocale locale("test.UTF-8");
    EXPECT_EQ(describe(*loadText(manifestWithNames)), "caf\u00E9\n\u00FC\n");
  }
  const ThreadLocale locale("test.ISO-8859-1");
  EXPECT_EQ(describe(*loadText(manifestWithNames)), "caf\xE9\n\xFC\n");
  EXPECT_EQ(describe(*loadText("<r><kiv><varnixpath><data path='\u65E5'/></varnixpath></kiv></r>")), "\\u65E5\n");
  EXPECT_EQ(captured.take(), "");
}

TEST(Record, CopiesAnOwnedText) {
  FileMapEntry entry;
  EXPECT_TRUE(entry.holder.isDefault);
  EXPECT_EQ(entry.holder.str, nullptr);
  EXPECT_FALSE(entry.holder.owned);
  entry.target = "t";
  entry.holder.set("text", true);
  const FileMapEntry& itself = entry;
  entry = itself;
  FileMapEntry copy(entry);
  EXPECT_NE(copy.holder.str, entry.holder.str);
  entry.holder.set(entry.holder.str + 1, true);
  EXPECT_STREQ(entry.holder.str, "ext");
  EXPECT_STREQ(copy.holder.str, "text");
  copy = FileMapEntry();
  EXPECT_EQ(copy.holder.str, nullptr);
  EXPECT_EQ(copy.target, "");
}

TEST(Library, HasItsVersion) {
  EXPECT_STREQ(libqzjexxml_version, "7.1.0.144");
  EXPECT_STREQ(libqzjexxml_build_date, "July 26, 2005");
}

}  // namespace
