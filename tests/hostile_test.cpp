// Hostile documents are rejected early, with one clear report, and the next good document loads. Large documents that
// are not hostile load.
#include "hostile_documents.h"
#include "support/manifest_load.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <string>

namespace {

using hostile::each;
using hostile::repeat;
using hostile::withDtd;

// A manifest with these files, and with declarations if there are any.
std::string manifest(const std::string& files, const std::string& declarations = "", const std::string& rootPath = "p",
                     const std::string& attributes = "") {
  const std::string all =
      "<r" + attributes + "><kiv><filemap><root path='" + rootPath + "'>" + files + "</root></filemap></kiv></r>";
  return declarations.empty()
             ? all
             : "<!DOCTYPE r [<!ELEMENT r ANY><!ELEMENT kiv ANY><!ELEMENT filemap ANY><!ELEMENT root "
               "ANY><!ELEMENT data ANY><!ATTLIST root path CDATA ''><!ATTLIST data file_name CDATA ''>" +
                   declarations + "]>" + all;
}

class HostileDocument : public ManifestLoad {
 protected:
  void expectRejection(const std::string& document, const std::string& message) {
    SCOPED_TRACE(message);
    EXPECT_EQ(load(document), "");
    const std::string messages = captured.take();
    EXPECT_EQ(messages.find("Fatal Error at file \"JexXml\", line 1, column "), 0u) << messages;
    EXPECT_EQ(messages.substr(messages.find('\n')), "\n   Message: " + message + "\nError buiding DOM\n");
    expectRecord(good, "here\n");
  }
};

TEST_F(HostileDocument, LoadsAtEachLimitAndNotBeyond) {
  const auto nested = [](std::size_t n) { return repeat(n, "<a>") + repeat(n, "</a>"); };
  const auto mixed = [](std::size_t n) { return withDtd("<!ELEMENT c (#PCDATA|" + each(n - 2, "n@|") + "n)*>", ""); };
  expectRecord(nested(1'000), "");
  expectRejection(nested(1'001), "the document nests elements deeper than 1,000");
  expectRecord(mixed(1'000), "");
  expectRejection(withDtd("<!ELEMENT m " + repeat(5'000, "(") + "x" + repeat(5'000, ")?") + ">", "<m/>"),
                  "a content model of the document has more than 2,000 names and operators");
  expectRejection(mixed(1'001), "a content model of the document has more than 2,000 names and operators");
  const auto chain = [](std::size_t n) {
    std::string entities = "<!ENTITY e0 ''>";
    for (std::size_t i = 1; i < n; ++i) {
      entities += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    }
    return withDtd(entities, "&e" + std::to_string(n - 1) + ";");
  };
  const auto enumeration = [](std::size_t n) {
    return withDtd("<!ATTLIST b c (" + std::string(n, 'x') + ") #IMPLIED>", "");
  };
  expectRecord(enumeration(1'000), "");
  expectRejection(enumeration(1'001), "an enumeration of the document has more than 1,000 characters");
  expectRecord(chain(64), "");
  expectRejection(chain(65), "the document nests entities deeper than 64");
  expectRecord(withDtd("<!--" + std::string(64 << 10U, ' ') + "-->", ""), "");
  expectRejection(withDtd("<!--" + std::string(80 << 10U, ' ') + "-->", ""),
                  "the document type declaration does not end in the first 64 KiB");
}

TEST_F(HostileDocument, IsRejectedForWork) {
  const auto tag = [](const std::string& prefix, std::string (*name)(std::size_t)) {
    return "<b" + hostile::fill(300'000, [&](std::size_t i) { return " " + prefix + name(i) + "='u'"; }) + "/>";
  };
  const std::string entity = "<!ENTITY e '" + std::string(10'000, ' ') + "'>";
  expectRecord(withDtd(entity, repeat(100, "&e;")), "");
  for (const std::string& document : {
           withDtd(entity, repeat(3'000, "&e;<b/>")),
           "<a>" + tag("", [](std::size_t i) { return "n" + std::to_string(i); }) +
               tag("", [](std::size_t i) { return std::string(50, 'n') + hostile::colliding(i); }) + "</a>",
           tag("xmlns:", hostile::colliding),
           "<a>" + hostile::fill(400'000, [](std::size_t i) { return "<" + hostile::colliding(i) + "/>"; }) + "</a>",
           withDtd("<!ATTLIST b i ID #IMPLIED>",
                   hostile::fill(500'000, [](std::size_t i) { return "<b i='" + hostile::colliding(i) + "'/>"; })),
           withDtd("<!ELEMENT m ((a|b)*,a" + repeat(20, ",(a|b)") + ")>", ""),
           withDtd("<!ATTLIST b xmlns CDATA '" + std::string(20'000, 'u') + "'>", repeat(1'000, "<b xmlns='u'/>")),
       }) {
    SCOPED_TRACE(document.substr(0, 200));
    expectRejection(document, "the document takes far more work than its size");
  }
}

TEST_F(HostileDocument, HasAThousandReportsAtMost) {
  for (const auto& [errors, reports] : {std::pair{1'000, 1'000}, {1'001, 1'001}, {100'000, 1'001}}) {
    load(withDtd("", repeat(static_cast<std::size_t>(errors), "<b x=''/>")));
    const std::string messages = captured.take();
    EXPECT_EQ(std::ranges::count(messages, '\n'), 2 * reports + 1);
    EXPECT_EQ(messages.find("the document has more than 1,000 errors") != std::string::npos, errors > 1'000);
  }
  expectRecord(withDtd("<!ATTLIST b" + repeat(1'002, " c CDATA ''") + ">", ""), "");  // warnings are not counted
}

TEST_F(HostileDocument, CannotMakeTheRecordLarge) {
  const auto files = [](std::size_t pathLength) {
    return manifest(each(2'000, "<data file_name='@'/>") + "</root><root path='" + std::string(pathLength, 'q') + "'>" +
                        each(2'000, "<data file_name='@'/>"),
                    "", std::string(pathLength, 'p'));
  };
  EXPECT_EQ(std::ranges::count(load(files(1'000)), '\n'), 4'000);
  expectMessages(files(100'000), "The file map is far larger than its document\n");
}

TEST_F(HostileDocument, LargeGoodDocumentsLoad) {
  const std::string row = "<data file_name='@'/>";
  const std::pair<std::size_t, std::string> documents[] = {
      {100'000, manifest(each(100'000, "<data xmlns='urn:x' file_name='@'/>"))},
      {5'000, manifest(each(5'000, "<data xmlns:p='urn:@' p:x='' file_name='@'/>"))},
      {2'000, manifest(each(2'000, row), "", "p", each(500, " xmlns:p@='u@'"))},
      {20'000, manifest(each(20'000, "<data file_name='&top;@'/>"),
                        "<!ENTITY top 'top/'><!ENTITY unused '" + std::string(500, ' ') + "'>")},
      {20'000,
       manifest(each(20'000, row), "<!ATTLIST data dir_name CDATA 'd' dir_rename CDATA 'e' mode CDATA '0644'>")},
      {5'000, manifest(each(5'000, "<data id='i@' file_name='@'/>"), "<!ATTLIST data id ID #REQUIRED>")},
      {1, manifest("<data refs='" + each(2'000, " i@") + "'/>" + each(2'000, "<!----><x id='i@'/>"),
                   "<!ELEMENT x ANY><!ATTLIST x id ID #IMPLIED><!ATTLIST data refs IDREFS #IMPLIED>")},
      {1, manifest("<data" + each(5'000, " a@=''") + "/>")},
      {300, manifest(each(300, "<data file_name='@'/><x@:ext xmlns:x@='urn:x@' x@:a='b'>text</x@:ext>"))},
      {1, manifest(repeat(20'000, "<!-- a comment -->") + repeat(20'000, "<?an instruction?>") + "<data/>")},
      {10'000, manifest(each(10'000, row), "", std::string(3'000, 'p'))},
      {1'000, "<r>" + each(1'000, "<kiv><varnixpath><data path='@'/></varnixpath></kiv>") + "</r>"},
      {2'000, manifest(each(2'000, "<data file_name='@' a@='' b@=''/><e@/>"))},
      {400, manifest(each(400, "<data file_name='@'><n@/></data>"),
                     each(400, "<!ELEMENT n@ (n@|x)*>") + "<!ELEMENT choice (" + each(399, "n@|") + "n399)*>")},
  };
  for (const auto& [entries, document] : documents) {
    const std::string record = load(document);
    EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(record, '\n')), entries) << document.substr(0, 500);
    EXPECT_EQ(captured.take(), "") << document.substr(0, 500);
  }
}

// Some of the documents; script/hostile loads all of them. Without the guard, a document takes thousands of times as
// long as a good document of its size.
TEST_F(HostileDocument, EachKindEndsEarly) {
  constexpr std::size_t size = std::size_t{32} << 10U;
  constexpr std::size_t step = 31;
  const auto secondsOf = [this](const std::string& document) {
    const std::clock_t start = std::clock();
    load(document);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  };
  const std::string goodOne = manifest(each(size / 30, "<data file_name='@'/>"));
  double seconds = std::numeric_limits<double>::max();
  for (int run = 0; run < 5; ++run) {
    seconds = std::min(seconds, secondsOf(goodOne));
  }
  const auto documents = hostile::documents();
  for (std::size_t i = 0; i < documents.size(); i += step) {
    EXPECT_LT(secondsOf(documents[i].text(size)), 200 * seconds) << documents[i].name;
    EXPECT_LT(captured.take().size(), 200'000u) << documents[i].name;
  }
  expectRecord(good, "here\n");
}

}  // namespace
