// A parse that is stopped by a budget at each place where it can be, or that the system has no more memory for at each
// of its allocations: each ends with an exception, and leaks nothing.
#include "document/error_reporter.h"
#include "document/guard/document_parser.h"
#include "document/parse_document.h"
#include "support/captured_stderr.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <set>
#include <string>

namespace jexxml {
namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

// The parser library's memory; the allocations after `lastGood` fail. What is left at the end is the stream of a
// document for whose reader there was no memory, which the parser library forgets.
struct FailingMemory : xercesc::MemoryManager {
  ~FailingMemory() override { std::ranges::for_each(blocks, std::free); }
  void* allocate(XMLSize_t size) override {
    if (++count > lastGood) {
      throw xercesc::OutOfMemoryException();
    }
    return *blocks.insert(std::malloc(size)).first;
  }
  void deallocate(void* memory) override {
    blocks.erase(memory);
    std::free(memory);
  }
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

  std::set<void*> blocks;
  std::size_t count = 0;
  std::size_t lastGood = never;
};

// Declarations of all kinds, some of them twice, content models of many names, and errors.
std::string document() {
  std::string names = "c0";
  for (int i = 1; i < 30; ++i) {
    names += ",c" + std::to_string(i);
  }
  return "<!DOCTYPE a [<!ELEMENT a (b|d|(" + names + "))*><!ENTITY % p '<!ELEMENT b (" + names +
         ")><!ELEMENT e EMPTY>'>" +
         "%p;%p;%p;<!NOTATION n SYSTEM ''><!ENTITY u SYSTEM '' NDATA n><!ENTITY e '<b/>x'><!ELEMENT d (#PCDATA|e)*>"
         "<!ATTLIST d i ID #IMPLIED r IDREFS 'x' u ENTITIES #IMPLIED n NOTATION (n|m) #IMPLIED v (p|q) 'p' w CDATA "
         "'&e;'>"
         "]><a x='1'><!-- c --><?p i?><d i='x' u='u'>t<![CDATA[t]]></d><d r='y'/>&e;<b><e/></b></a>";
}

class Guard : public testing::Test {
 protected:
  void SetUp() override { xercesc::XMLPlatformUtils::Initialize(nullptr, nullptr, nullptr, &memory); }
  void TearDown() override { xercesc::XMLPlatformUtils::Terminate(); }

  // Whether the parse came to its end.
  bool parse(const std::string& text, const Budgets& budgets, std::size_t goodAllocations = never) {
    const std::size_t before = heapBytes();
    bool ended = false;
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "JexXml");
    memory.count = 0;
    memory.lastGood = goodAllocations;
    try {
      DocumentParser parser(budgets);
      try {
        configure(parser);
        parser.setErrorHandler(&reporter);
        parser.parse(source);
        ended = true;
      } catch (const DocumentRefused&) {
      }
      taken = heapBytes() - before;
    } catch (const xercesc::OutOfMemoryException&) {
    }
    memory.lastGood = never;
    return ended;
  }

  static std::size_t heapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  }

  std::size_t taken = 0;  // at the end of the last parse, of which nothing is freed before when it was refused
  FailingMemory memory;
  JexXmlErrorReporter reporter;
  CapturedStderr captured;
};

TEST_F(Guard, StopsAParseThatIsTooLarge) {
  int stops = 0;
  Budgets budgets(0);
  budgets.memory.most = 0;
  for (; !parse(document(), budgets); budgets.memory.most += 1'024, ++stops) {
    EXPECT_NE(captured.take().find("Message: the document takes far more memory than its size\n"), std::string::npos);
  }
  EXPECT_GT(stops, 50);
}

TEST_F(Guard, StopsAParseThatTakesTooMuchWork) {
  int stops = 0;
  Budgets budgets(0);
  budgets.work.most = 0;
  for (; !parse(document(), budgets); budgets.work.most += 2'000, ++stops) {
    EXPECT_NE(captured.take().find("Message: the document takes far more work than its size\n"), std::string::npos);
  }
  EXPECT_GT(stops, 50);
}

// Wherever most of it is taken: in attributes, in values by default, in a value out of entities, in the names.
TEST_F(Guard, KeepsMemoryWithinItsBudget) {
  const auto each = [](int count, const std::string& before, const std::string& after) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += before + std::to_string(i) + after;
    }
    return text;
  };
  const std::string start = "<!DOCTYPE a [<!ELEMENT a ANY><!ELEMENT b ANY>";
  for (const std::string& text : {
           start + "<!ATTLIST b" + each(100, " c", " CDATA ''") + ">]><a>" + each(10'000, "<b/><!--", "-->") + "</a>",
           start + "<!ATTLIST b c CDATA '" + std::string(20'000, 'x') + "'>]><a>" + each(5'000, "<b/><!--", "-->") +
               "</a>",
           start + "<!ENTITY e '" + std::string(10'000, 'x') + "'>]><a c='" + each(2'000, "&e;", "") + "'/>",
           "<a>" + each(20'000, "<b", "/>") + "</a>",
       }) {
    Budgets budgets(0);
    budgets.work.most = never;
    budgets.memory.most = std::uint64_t{4} << 20U;
    EXPECT_FALSE(parse(text, budgets));
    EXPECT_LT(taken, budgets.memory.most + (4U << 20U)) << text.substr(0, 100);  // with the reserve
  }
}

// From each allocation on.
TEST_F(Guard, StopsAParseWithoutMemory) {
  std::size_t goodAllocations = 0;
  while (!parse(document(), Budgets(0), goodAllocations)) {
    ++goodAllocations;
  }
  EXPECT_GT(goodAllocations, 1000U);
}

}  // namespace
}  // namespace jexxml
