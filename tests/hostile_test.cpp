// Documents made to cost much: each is refused with one clear report, soon, and the next good load works.
#include "hostile_documents.h"
#include "support/manifest_load.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <string>

namespace {

using Part = std::function<std::string(std::size_t)>;

std::string each(std::size_t count, const Part& part) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += part(i);
  }
  return text;
}

std::string each(std::size_t count, const std::string& before, const std::string& after) {
  return each(count, [&](std::size_t i) { return before + std::to_string(i) + after; });
}

std::string repeat(std::size_t count, const std::string& part) {
  return each(count, [&](std::size_t) { return part; });
}

std::string withDtd(const std::string& declarations, const std::string& content) {
  return "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b EMPTY>" + declarations + "]><a>" + content + "</a>";
}

class HostileDocument : public ManifestLoad {
 protected:
  void expectRefusal(const std::string& document, const std::string& message) {
    SCOPED_TRACE(message);
    EXPECT_EQ(load(document), "");
    const std::string messages = captured.take();
    EXPECT_EQ(messages.find("Fatal Error at file \"JexXml\", line 1, column "), 0u) << messages;
    EXPECT_EQ(messages.substr(messages.find('\n')), "\n   Message: " + message + "\nError buiding DOM\n");
    expectRecord(good, "here\n");
  }
};

struct Limited {
  std::size_t most;
  const char* message;
  Part document;  // of the given number of what is limited
};

const Limited limited[] = {
    {1'000, "the document nests elements deeper than 1,000",
     [](std::size_t n) { return repeat(n, "<a>") + repeat(n, "</a>"); }},
    {1'000, "an element has more than 1,000 attributes",
     [](std::size_t n) { return "<a" + each(n, " b", "=''") + "/>"; }},
    {10'000, "the document declares more than 10,000 namespaces",
     [](std::size_t n) { return "<a xmlnsfoo=''>" + each(n, "<b xmlns='u", "'/>") + "</a>"; }},
    {2'000, "the document has more than 2,000 different element names",
     [](std::size_t n) { return "<a>" + each(n - 1, "<b", "/>") + "</a>"; }},
    {2'000, "the document has more than 2,000 different attribute names",
     [](std::size_t n) { return "<a>" + each(n, "<b c", "=''/>") + "</a>"; }},
    {2'000, "the document declares more than 2,000 entities and notations",
     [](std::size_t n) { return withDtd("<!NOTATION n SYSTEM ''>" + each(n - 1, "<!ENTITY e", " ''>"), ""); }},
    {2'000, "the document declares elements more than 2,000 times",
     [](std::size_t n) { return withDtd("<!ATTLIST b c CDATA ''>" + each(n - 3, "<!ELEMENT d", " ANY>"), ""); }},
    {1'000, "the document declares more than 1,000 attributes of an element",
     [](std::size_t n) { return withDtd("<!ATTLIST b" + each(n, " c", " CDATA #IMPLIED") + ">", ""); }},
    {10'000, "the document has more than 10,000 identifiers and references to them",
     [](std::size_t n) {
       return withDtd("<!ATTLIST b c ID #IMPLIED d IDREFS #IMPLIED>", each(n - 2, "<b c='i", "'/>") + "<b d='i0 i1'/>");
     }},
    {10'000, "the document declares an attribute with too many values",
     [](std::size_t n) { return withDtd("<!ATTLIST b c (" + std::string(n, 'x') + ") #IMPLIED>", ""); }},
    {811, "the content models of the document are too complex",
     [](std::size_t n) { return withDtd("<!ELEMENT c (" + each(n - 1, "d", ",") + "e)>", ""); }},
    {60'000, "the document expands more than 60,000 entities",
     [](std::size_t n) { return withDtd("<!ENTITY % e ''>" + repeat(n, "%e;"), ""); }},
    {50'000,
     "parser has encountered more than '50000' entity expansions in the document; this is the limit imposed by the "
     "application",
     [](std::size_t n) { return withDtd("<!ENTITY e ''>", repeat(n, "&e;")); }},
};

TEST_F(HostileDocument, LoadsAtEachLimitAndNotBeyond) {
  for (const auto& [most, message, document] : limited) {
    SCOPED_TRACE(message);
    expectRecord(document(most), "");
    expectRefusal(document(most + 1), message);
  }
}

TEST_F(HostileDocument, IsRefusedForItsText) {
  const std::string entity = "<!ENTITY e '" + std::string(10'000, ' ') + "'>";
  for (const char* model : {"ANY", "(b*)"}) {
    const std::string document =
        "<!DOCTYPE a [<!ELEMENT b EMPTY><!ELEMENT a " + std::string(model) + ">" + entity + "]><a>";
    expectRecord(document + repeat(100, "&e;") + "</a>", "");
    expectRefusal(document + repeat(10'000, "&e;") + "</a>", "the document expands to far more than its size");
  }
}

TEST_F(HostileDocument, IsRefusedForATagThatIsNotYetKnown) {
  expectRefusal("<a" + each(60'000, " b", "=''") + "/>", "a tag or declaration of the document has too many parts");
  expectRefusal(withDtd("<!ATTLIST b c IDREFS #IMPLIED>", "<b c='" + std::string(300'000, 'x') + "'/>"),
                "a tag or comment is too long where lists of identifiers are declared");
}

TEST_F(HostileDocument, IsReportedAThousandTimesAtMost) {
  for (const auto& [errors, reports] : {std::pair{1'000, 1'000}, {1'001, 1'001}, {100'000, 1'001}}) {
    load(withDtd("", repeat(static_cast<std::size_t>(errors), "<b x=''/>")));
    const std::string messages = captured.take();
    EXPECT_EQ(std::ranges::count(messages, '\n'), 2 * reports + 1);
    EXPECT_EQ(messages.find("the document has more than 1,000 errors") != std::string::npos, errors > 1'000);
  }
  expectRecord(withDtd(repeat(1'001, "<!ATTLIST b c CDATA #IMPLIED>"), ""), "");  // of warnings
}

TEST_F(HostileDocument, CannotMakeTheRecordLarge) {
  const auto manifest = [](std::size_t pathLength) {
    return "<r><kiv><filemap><root path='" + std::string(pathLength, 'p') + "'>" +
           each(1'000, "<data file_name='", "'/>") + "</root></filemap></kiv></r>";
  };
  EXPECT_EQ(std::ranges::count(load(manifest(1'000)), '\n'), 1'000);
  expectMessages(manifest(100'000), "The file map is far larger than its document\n");
}

// Its bytes times what each may take in memory are more than 32 bits hold.
TEST_F(HostileDocument, IsNotEveryLargeOne) { expectRecord(std::string(good).insert(5, 66'700'000, ' '), "here\n"); }

TEST_F(HostileDocument, OfEachFamilyEndsSoon) {
  for (const auto& family : hostile::families()) {
    const std::clock_t start = std::clock();
    load(family.document(std::size_t{32} << 10U));
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds, 5) << family.name << ": without its limit this takes much longer, on any machine";
    EXPECT_LT(captured.take().size(), 500'000u) << family.name;
  }
  expectRecord(good, "here\n");
}

TEST_F(HostileDocument, TruncatedIsReported) {
  for (std::size_t length = 1; length < good.size(); ++length) {
    EXPECT_EQ(load(good.substr(0, length)), "");
    EXPECT_TRUE(captured.take().ends_with("\nError buiding DOM\n")) << length;
  }
}

}  // namespace
