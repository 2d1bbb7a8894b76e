// A parse that is stopped at each place where it can be, or that the system has no more memory for at each of
// its allocations: each ends with an exception, and leaks nothing.
#include "document/error_reporter.h"
#include "document/guard/document_parser.h"
#include "support/captured_stderr.h"

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <cstdlib>
#include <limits>
#include <string>

namespace jexxml {
namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

// The parser library's memory; the allocations after `lastGood`, up to `lastBad`, fail.
struct FailingMemory : xercesc::MemoryManager {
  void* allocate(XMLSize_t size) override {
    if (++count > lastGood && count <= lastBad) {
      throw xercesc::OutOfMemoryException();
    }
    return std::malloc(size);
  }
  void deallocate(void* memory) override { std::free(memory); }
  xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }

  std::size_t count = 0;
  std::size_t lastGood = never;
  std::size_t lastBad = never;
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

class Checkpoint : public testing::Test {
 protected:
  void SetUp() override { xercesc::XMLPlatformUtils::Initialize(nullptr, nullptr, nullptr, &memory); }
  void TearDown() override { xercesc::XMLPlatformUtils::Terminate(); }

  // Whether the parse came to its end.
  bool parse(const Limit& size, std::size_t goodAllocations, std::size_t* mostBytes = nullptr) {
    bool ended = false;
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "JexXml");
    memory.count = 0;
    memory.lastGood = goodAllocations;
    try {
      DocumentParser parser(size);
      try {
        parser.setErrorHandler(&reporter);
        parser.parse(source);
        ended = true;
      } catch (const DocumentRefused&) {
      }
      if (mostBytes != nullptr) {
        *mostBytes = parser.mostBytesInUse();
      }
    } catch (const xercesc::OutOfMemoryException&) {
    }
    memory.lastGood = never;
    return ended;
  }

  FailingMemory memory;
  JexXmlErrorReporter reporter;
  CapturedStderr captured;
  const std::string text = document();
};

TEST_F(Checkpoint, StopsAParseThatIsTooLarge) {
  int stops = 0;
  for (std::size_t bytes = 0; !parse({bytes, u"too large"}, never, &bytes); ++stops) {
    EXPECT_NE(captured.take().find("Message: too large\n"), std::string::npos);
  }
  EXPECT_GT(stops, 5);
}

TEST_F(Checkpoint, KeepsAReserveForDestructors) {
  memory.lastGood = 0;
  CountedMemory counted;
  for (int list = 0; list < 10'000; ++list) {  // each grows once
    void* small = counted.allocate(10 * sizeof(void*));
    void* large = counted.allocate(11 * sizeof(void*));
    counted.deallocate(small);
    counted.deallocate(large);
  }
  for (std::size_t list = 0; list < 12'000 / sizeof(void*); ++list)
    counted.allocate(10 * sizeof(void*));  // more than half of the reserve
  EXPECT_THROW(counted.allocate(21), xercesc::OutOfMemoryException);
  EXPECT_TRUE(counted.reserveUsed);
  memory.lastGood = never;
}

TEST_F(Checkpoint, StopsAParseWithoutMemory) {
  std::size_t goodAllocations = 0;
  while (!parse(sizeLimit(0), goodAllocations)) {
    ++goodAllocations;
  }
  EXPECT_GT(goodAllocations, 1000U);
  memory.lastBad = goodAllocations / 2 + 1;
  EXPECT_FALSE(parse(sizeLimit(0), goodAllocations / 2));
}

}  // namespace
}  // namespace jexxml
