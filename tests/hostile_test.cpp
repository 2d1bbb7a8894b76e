// Documents made to cost much: each is refused with one clear report, soon, and the next good load works.
#include "hostile_documents.h"
#include "hostile_parts.h"
#include "support/manifest_load.h"

#include <algorithm>
#include <ctime>
#include <string>

namespace {

using hostile::repeat;

std::string each(std::size_t count, const std::string& before, const std::string& after) {
  return hostile::join(count, "", [&](std::size_t i) { return hostile::named(before, i) + after; });
}

std::string withDtd(const std::string& declarations, const std::string& content) {
  return hostile::withDtd("<!ELEMENT a ANY><!ELEMENT b EMPTY>" + declarations, hostile::inRoot(content));
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

TEST_F(HostileDocument, LoadsAtEachLimitAndNotBeyond) {
  for (const auto& [most, message, document] : hostile::limited()) {
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
  expectRecord(withDtd("<!ATTLIST b" + repeat(1'002, " c CDATA ''") + ">", ""), "");  // of warnings
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

}  // namespace
