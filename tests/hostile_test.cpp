// Documents made to cost much: each ends with one clear report, soon, and the next good load works.
#include <gtest/gtest.h>
#include <qzjexxml/qzjexxml.h>

#include <chrono>
#include <functional>
#include <string>

#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

namespace {

std::string repeat(int count, const std::function<std::string(int)>& part) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += part(i);
  }
  return text;
}

std::string repeat(int count, const std::string& part) {
  return repeat(count, [&part](int) { return part; });
}

std::string withDtd(const std::string& declarations, const std::string& root) {
  return "<!DOCTYPE a [<!ELEMENT a ANY>" + declarations + "]>" + root;
}

// Entities named e0, e1, ...: each refers `width` times to the one before it.
std::string entityTower(const std::string& kind, const std::string& reference, const std::string& ground, int height,
                        int width) {
  return repeat(height, [&](int i) {
    const std::string value = i == 0 ? ground : repeat(width, reference + "e" + std::to_string(i - 1) + ";");
    return "<!ENTITY " + kind + "e" + std::to_string(i) + " '" + value + "'>";
  });
}

struct Hostile {
  const char* name;
  std::function<std::string()> document;
  const char* message;  // of the report; empty: the document loads
};

void PrintTo(const Hostile& hostile, std::ostream* stream) { *stream << hostile.name; }

class HostileDocument : public testing::TestWithParam<Hostile> {
 protected:
  std::size_t loadedPaths(const std::string& document) {
    const std::string file = folder.write("manifest.xml", document);
    KIVData* handle = nullptr;
    EXPECT_EQ(InitKIVData(file.c_str(), &handle), 1);
    const std::size_t count = handle->varnixPath.size();
    TermKIVData(&handle);
    return count;
  }

  ScratchFolder folder;
  CapturedStderr captured;
};

TEST_P(HostileDocument, EndsSoonWithOneReport) {
  const std::string document = GetParam().document();
  const auto start = std::chrono::steady_clock::now();
  loadedPaths(document);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  EXPECT_LT(taken.count(), 10) << "without its limit this takes much longer, on any machine";
  const std::string messages = captured.take();
  if (*GetParam().message == '\0') {
    EXPECT_EQ(messages, "");
  } else {
    EXPECT_EQ(messages.find("Fatal Error at file \"JexXml\", line "), 0u) << messages;
    EXPECT_NE(messages.find("\n   Message: " + std::string(GetParam().message) + "\nError buiding DOM\n"),
              std::string::npos)
        << messages;
    EXPECT_EQ(messages.find("Error at", 10), std::string::npos) << messages;
  }
  EXPECT_EQ(loadedPaths("<r><kiv><varnixpath><data path='p'/></varnixpath></kiv></r>"), 1u);
  EXPECT_EQ(captured.take(), "");
}

constexpr const char* tooDeep = "the document nests elements deeper than 1,000";
constexpr const char* tooManyOpened = "the document expands more than 60,000 entities";
constexpr const char* tooLarge = "the document expands to far more than its size";
constexpr const char* tooManyDeclared = "the document declares more than 10,000 entities and notations";
constexpr const char* tooManyExpanded =
    "parser has encountered more than '50000' entity expansions in the document; this is the limit imposed by the "
    "application";

const Hostile documents[] = {
    {"DeepEnough", [] { return repeat(1000, "<a>") + repeat(1000, "</a>"); }, ""},
    {"TooDeep", [] { return repeat(200000, "<a>") + repeat(200000, "</a>"); }, tooDeep},
    {"DeepThroughEntities",
     [] {
       return withDtd(repeat(100,
                             [](int i) {
                               const std::string inner = i == 0 ? "" : "&n" + std::to_string(i - 1) + ";";
                               return "<!ENTITY n" + std::to_string(i) + " '" + repeat(12, "<a>") + inner +
                                      repeat(12, "</a>") + "'>";
                             }),
                      "<a>&n99;</a>");
     },
     tooDeep},
    {"AFewEntities",
     [] { return withDtd(entityTower("", "&", "x", 3, 10) + "<!ATTLIST a b CDATA '&e2;'>", "<a>&e2;</a>"); }, ""},
    {"EntitiesInText", [] { return withDtd(entityTower("", "&", "x", 9, 10), "<a>&e8;</a>"); }, tooManyExpanded},
    {"EntitiesInAttributes",
     [] { return withDtd("<!ATTLIST a b CDATA #IMPLIED>" + entityTower("", "&", "", 9, 10), "<a b='&e8;'/>"); },
     tooManyExpanded},
    {"EntitiesInDefaults",
     [] { return withDtd(entityTower("", "&", "", 9, 10) + "<!ATTLIST a b CDATA '&e8;'>", "<a/>"); }, tooManyOpened},
    {"ParameterEntities", [] { return withDtd(entityTower("% ", "&#37;", " ", 9, 10) + "%e8;", "<a/>"); },
     tooManyOpened},
    {"LargeEntitiesInText", [] { return withDtd(entityTower("", "&", std::string(10000, 'x'), 5, 10), "<a>&e4;</a>"); },
     tooLarge},
    {"LargeEntitiesInDefaults",
     [] {
       return withDtd(entityTower("", "&", std::string(10000, 'x'), 5, 10) + "<!ATTLIST a b CDATA '&e4;'>", "<a/>");
     },
     tooLarge},
    {"OneLargeEntity",
     [] { return withDtd("<!ENTITY e '" + std::string(1000000, 'x') + "'>", "<a>" + repeat(20000, "&e;") + "</a>"); },
     tooLarge},
    {"ManyEntities",
     [] { return withDtd(repeat(100000, [](int i) { return "<!ENTITY z" + std::to_string(i) + " ''>"; }), "<a/>"); },
     tooManyDeclared},
    {"AMillionAttributes",
     [] { return "<a " + repeat(1000000, [](int i) { return " b" + std::to_string(i) + "=''"; }) + "/>"; },
     "an element has more than 1,000 attributes"},
    {"ManyElementNames",
     [] { return "<a>" + repeat(300000, [](int i) { return "<b" + std::to_string(i) + "/>"; }) + "</a>"; },
     "the document has more than 10,000 different element names"},
    {"ManyAttributeNames",
     [] { return "<a>" + repeat(300000, [](int i) { return "<b c" + std::to_string(i) + "=''/>"; }) + "</a>"; },
     "the document has more than 10,000 different attribute names"},
    {"ManyNamespaces",
     [] { return "<a>" + repeat(300000, [](int i) { return "<b xmlns='u" + std::to_string(i) + "'/>"; }) + "</a>"; },
     "the document declares more than 10,000 namespaces"},
    {"ALongAttribute", [] { return "<a b='" + std::string(50000000, 'x') + "'/>"; }, ""},
    {"NulBytes", [] { return std::string("<a>\0</a>", 8); },
     "input ended before all started tags were ended; last tag started is 'a'"},
    {"AnUnknownEncoding", [] { return "<?xml version='1.0' encoding='none'?><a/>"; },
     "unable to create converter for 'NONE' encoding"},
    {"ALyingEncoding", [] { return "<?xml version='1.0' encoding='UTF-16'?><a/>"; }, ""},
    {"BytesThatAreNoUtf8", [] { return "<a>\xC3\x28</a>"; }, "invalid byte '(' at position 2 of a 2-byte sequence"},
};

INSTANTIATE_TEST_SUITE_P(Kinds, HostileDocument, testing::ValuesIn(documents),
                         [](const auto& instance) { return instance.param.name; });

class Truncation : public HostileDocument {};

TEST_F(Truncation, OfAGoodManifestIsReported) {
  std::ifstream stream(EXAMPLES "/manifest.xml", std::ios::binary);
  const std::string whole{std::istreambuf_iterator<char>(stream), {}};
  const std::size_t end = whole.rfind('>');
  for (std::size_t length = 1; length <= end; ++length) {
    EXPECT_EQ(loadedPaths(whole.substr(0, length)), 0u) << length;
    EXPECT_TRUE(captured.take().ends_with("\nError buiding DOM\n")) << length;
  }
  EXPECT_EQ(loadedPaths(whole), 3u);
}

}  // namespace
