// Parses that exceed a budget at each place that checks it, and the memory that these parses take.
#include "document/error_reporter.h"
#include "document/guard/document_parser.h"
#include "document/parse_document.h"
#include "hostile_documents.h"
#include "support/captured_stderr.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <tuple>

namespace jexxml {
namespace {

using hostile::each;

class Guard : public testing::Test {
 protected:
  void SetUp() override { xercesc::XMLPlatformUtils::Initialize(); }
  void TearDown() override { xercesc::XMLPlatformUtils::Terminate(); }

  // Returns whether the parse was completed.
  bool parse(const std::string& text, const Budgets& budgets) {
    const std::size_t before = heapBytes();
    bool ended = false;
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "JexXml");
    DocumentParser parser(budgets);
    try {
      configure(parser);
      parser.setErrorHandler(&reporter);
      parser.parse(source);
      ended = true;
    } catch (const DocumentRefused&) {
    }
    taken = heapBytes() - before;
    return ended;
  }

  static std::size_t heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  }

  std::size_t taken = 0;  // heap bytes in use when the last parse ended; a parse that is stopped frees nothing
  JexXmlErrorReporter reporter;
  CapturedStderr captured;
};

TEST_F(Guard, StopsAParseAtEachPlace) {
  std::ifstream stream(TEST_DATA "/declarations.xml");
  const std::string document(std::istreambuf_iterator<char>(stream), {});
  for (const auto& [budget, step, message] :
       {std::tuple(&Budgets::memory, 1'024, "Message: the document takes far more memory than its size\n"),
        {&Budgets::work, 2'000, "Message: the document takes far more work than its size\n"}}) {
    int stops = 0;
    Budgets budgets(0);
    for ((budgets.*budget).most = 0; !parse(document, budgets); (budgets.*budget).most += step, ++stops) {
      EXPECT_NE(captured.take().find(message), std::string::npos);
    }
    EXPECT_GT(stops, 50);
  }
}

// Most of the memory is used for attributes, default values, a value from entities, or names.
TEST_F(Guard, KeepsMemoryWithinItsBudget) {
  const std::string start = "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b ANY>";
  for (const std::string& text : {
           start + "<!ATTLIST b" + each(100, " c@ CDATA ''") + ">]><a>" + each(10'000, "<b/><!--@-->") + "</a>",
           start + "<!ATTLIST b c CDATA '" + std::string(20'000, 'x') + "'>]><a>" + each(5'000, "<b/><!--@-->") +
               "</a>",
           start + "<!ENTITY e '" + std::string(10'000, 'x') + "'>]><a c='" + hostile::repeat(2'000, "&e;") + "'/>",
           "<a>" + each(20'000, "<b@/>") + "</a>",
       }) {
    Budgets budgets(0);
    budgets.work.most = std::numeric_limits<std::uint64_t>::max();
    budgets.memory.most = std::uint64_t{4} << 20U;
    EXPECT_FALSE(parse(text, budgets));
    EXPECT_LT(taken, budgets.memory.most + (4U << 20U)) << text.substr(0, 100);  // with the reserve
  }
}

}  // namespace
}  // namespace jexxml
