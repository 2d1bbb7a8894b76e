// Loads during which a conversion, the start of Xerces-C, or an allocation fails. The program defines the functions of
// libnuvo itself, so that a conversion can do anything.
#include "support/manifest_load.h"

#include <nuvo.h>
#include <qzjexxml/manifest.h>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <tuple>
#include <utility>

namespace {

// Called with the text of each conversion. If it throws, the conversion throws; if it returns false, the conversion
// returns null.
std::function<bool(const std::string&)> onConversion;
int textsAlive = 0;

[[noreturn]] void throwXmlException() {
  using namespace xercesc;
  ThrowXML1(RuntimeException, XMLExcepts::File_CouldNotOpenFile, u"x");
}

[[noreturn]] void throwDomException() { throw xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR); }

[[noreturn]] void throwOutOfMemory() { throw xercesc::OutOfMemoryException(); }

void (*onStart)() = nullptr;  // called after Xerces-C has started
bool nothrowNewWorks = true;

constexpr std::size_t never = static_cast<std::size_t>(-1);
std::size_t firstBad = never;  // number of an allocation, counted from now on
std::size_t lastBad = 0;
std::size_t largestGood = never;
std::size_t allocations = 0;
long blocksAlive = 0;
#if defined(__SANITIZE_ADDRESS__)
const bool isSlow = true;  // only every 7th allocation fails
#else
const bool isSlow = std::getenv("EMULATED") != nullptr;  // set by cmake/i386-toolchain.cmake for qemu-user
#endif

template <typename To, typename From>
To* convert(const From* text) {
  std::size_t length = 0;
  std::string ascii;
  for (; text[length] != 0; ++length) {
    ascii += static_cast<char>(text[length]);
  }
  if (onConversion && !onConversion(ascii)) {
    return nullptr;
  }
  ++textsAlive;
  auto* converted = static_cast<To*>(std::malloc((length + 1) * sizeof(To)));
  std::copy(text, text + length + 1, converted);
  return converted;
}

}  // namespace

char16_t* lcp_to_utf16(const char* text, int) { return convert<char16_t>(text); }

char* utf16_to_lcp(const char16_t* text, int) { return convert<char>(text); }

std::size_t nuvoStrlen(const char* text) { return std::strlen(text); }

void nuvoFree(void* text) {
  --textsAlive;
  std::free(text);
}

[[gnu::noinline]] void* operator new(std::size_t size) {
  ++allocations;
  const bool isBad = (allocations >= firstBad && allocations <= lastBad) || size > largestGood;
  void* block = isBad ? nullptr : std::malloc(size);
  blocksAlive += block != nullptr ? 1 : 0;
  return block != nullptr ? block : throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
  blocksAlive -= block != nullptr ? 1 : 0;
  std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, const std::nothrow_t&) noexcept { ::operator delete(block); }

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept { ::operator delete(block); }

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return nothrowNewWorks ? ::operator new(size) : nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

// Replaces the function of Xerces-C, and calls it.
void xercesc::XMLPlatformUtils::Initialize(const char* locale, const char* home, PanicHandler* panicHandler,
                                           MemoryManager* memoryManager) {
  static const auto start = reinterpret_cast<void (*)(const char*, const char*, PanicHandler*, MemoryManager*)>(
      dlsym(RTLD_NEXT, "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_13MemoryManagerE"));
  ASSERT_NE(start, nullptr);
  start(locale, home, panicHandler, memoryManager);
  if (onStart != nullptr) {
    onStart();
  }
}

namespace {

class FailingLoad : public ManifestLoad {
 protected:
  void TearDown() override {
    onConversion = nullptr;
    onStart = nullptr;
    expectRecord(document, "N = /n\na\nb\n");
    EXPECT_EQ(textsAlive, 0);
    EXPECT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "Xerces-C was not stopped";
  }

  void raiseAt(const char* text, void (*raise)()) {
    onConversion = [=](const std::string& converted) {
      if (converted == text) {
        raise();
      }
      return true;
    };
  }

  void expectLoad(std::string_view text, std::string_view record, std::string_view messages) {
    EXPECT_EQ(load(text), record);
    EXPECT_EQ(captured.take(), messages);
  }

  static constexpr const char* document =
      "<r><kiv><varnixpath><data path='a'/></varnixpath></kiv><kiv><rootmacro><data name='N' abspath='/n'/></rootmacro>"
      "<varnixpath><stop/><data path='b'/></varnixpath></kiv></r>";
};

TEST_F(FailingLoad, ReportsExceptionsAndKeepsCompleteEntries) {
  const std::tuple<void (*)(), const char*, const char*> exceptions[] = {
      {throwXmlException, "An error occurred Inside buildKivMaster \n \n\nMessage: unable to open file 'x'\n",
       "An error occurred during parsing\n   Message: unable to open file 'x'\nError buiding DOM\n"},
      {throwDomException, "A DOM error occurred Inside buildKivMaster \n \nDOMException code: 8\n",
       "A DOM error occurred during parsing\n   DOMException code: 8\nError buiding DOM\n"},
      {throwOutOfMemory, "An error occurred Inside buildKivMaster \n \n",
       "An error occurred during parsing\n \nError buiding DOM\n"},
  };
  const std::string project = directory.write("project.xml", "<r><dependency><stop/></dependency></r>");
  for (const auto& [raise, buildMessages, parseMessages] : exceptions) {
    raiseAt("stop", raise);
    expectLoad(document, "a\n", buildMessages);
    void* handle = nullptr;
    EXPECT_EQ(InitNOXData(project.c_str(), &handle), 0);
    EXPECT_EQ(captured.take(), buildMessages);
    raiseAt("JexXml", raise);  // the conversion of the name in an error's report
    expectLoad("<r>", "", parseMessages);
  }
}

TEST_F(FailingLoad, ContinuesWithoutTextsThatCannotBeConverted) {
  const std::string unset = "\nOwner Node and Attribute Name Not Set!\n";
  const std::string unbuilt = "Attribute has not been built!\n";
  onConversion = [](const std::string& text) { return text != "path" && text != "stop"; };
  expectLoad(document, "N = /n\n\n\n", unset + unset + unbuilt + unbuilt);
  onConversion = [](const std::string& text) { return text != "a"; };
  expectLoad(document, "N = /n\n\nb\n", "");
  onConversion = [](const std::string&) { return false; };
  expectLoad(document, "", unset + unset + unset + unset);  // the root's attributes

  const char* file = "<r><kiv><filemap><root path='r'><data dir_name='d' file_name='f'/></root></filemap></kiv></r>";
  for (const auto& [name, record, reads] : {std::tuple("dir_name", "r//f -> /f\n", 2),
                                            {"file_name", "r/d/ -> d/\n", 2},
                                            {"dir_rename", "r/d/f -> d/f\n", 1},
                                            {"path", "/d/f -> d/f\n", 1}}) {
    onConversion = [name](const std::string& text) { return text != name; };
    expectLoad(file, record, unset + unbuilt + (reads == 2 ? unbuilt : ""));
  }
  int emptyTexts = 0;  // empty texts are not cached
  onConversion = [&emptyTexts](const std::string& text) { return emptyTexts += text.empty() ? 1 : 0, true; };
  expectLoad("<r><kiv><filemap><root><data dir_name='' dir_rename=''/></root></filemap></kiv></r>", "// -> /\n", "");
  EXPECT_EQ(emptyTexts, 3);
}

TEST_F(FailingLoad, ReportsAFailedStart) {
  nothrowNewWorks = false;
  expectLoad(document, "", "Error Allocating Common Strings\n");
  nothrowNewWorks = true;
  largestGood = (std::size_t{1} << 20U) - 1;  // Xerces-C is not started with less than 1 MiB free
  onStart = [] { std::abort(); };
  EXPECT_THROW(load(document), std::bad_alloc);
  largestGood = never;
  onStart = throwXmlException;
  expectLoad(document, "", "Error during Xerces-c Initialization.\n  Exception message:unable to open file 'x'\n");
  onStart = nullptr;
  raiseAt("security", [] { throw std::bad_alloc(); });  // while the name table is built
  KIVData* record = nullptr;
  EXPECT_THROW(InitKIVData(directory.path("manifest.xml").c_str(), &record), std::bad_alloc);
  EXPECT_EQ(record, nullptr);
  EXPECT_EQ(captured.take(), "");
}

// The n-th allocation fails, or all allocations from the n-th on, for each n from the start of Xerces-C to its stop.
// The load ends normally or with std::bad_alloc, and leaks nothing. Each load has a process of its own, because a
// failed start leaves Xerces-C unusable. If the program has started Xerces-C itself, it can still use it.
TEST_F(FailingLoad, SurvivesOutOfMemory) {
  using xercesc::XMLPlatformUtils;
  enum Outcome { untouched, ended, noMemory, lost, leaked, stopped };
  const auto outcomeOf = [](const std::string& file, bool isStarted, std::size_t first, std::size_t last) {
    const pid_t child = fork();
    if (child == 0) {
      std::cerr.rdbuf(nullptr);
      Outcome outcome = lost;
      const long before = blocksAlive;
      const auto* const handler = XMLPlatformUtils::fgUserPanicHandler;
      allocations = 0;
      firstBad = first;
      lastBad = last;
      try {
        qzjexxml::loadManifest(file);
        outcome = ended;
      } catch (const qzjexxml::LoadError&) {
        outcome = ended;
      } catch (const std::bad_alloc&) {
        outcome = noMemory;
      }
      firstBad = never;
      const bool isHalfStarted = !isStarted && XMLPlatformUtils::fgMemoryManager != nullptr;
      outcome = allocations < first ? untouched : outcome;
      outcome = blocksAlive > before && !isHalfStarted ? leaked : outcome;
      outcome = std::cerr.rdbuf() != nullptr || XMLPlatformUtils::fgUserPanicHandler != handler ? lost : outcome;
      if (isStarted) {
        std::make_unique<xercesc::XercesDOMParser>();
        XMLPlatformUtils::Terminate();
        outcome = XMLPlatformUtils::fgMemoryManager != nullptr ? stopped : outcome;
      }
      _exit(outcome);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  };
  const std::string small = directory.write(
      "small.xml",
      "<!DOCTYPE r [<!ELEMENT r (kiv|(a,b?,c*))*><!ELEMENT kiv ANY><!ENTITY e 'f'><!ATTLIST kiv i ID #IMPLIED d CDATA "
      "'&e;'>]><r><kiv i='j'>&e;</kiv><kiv/></r>");
  for (const auto& [isStarted, file] :
       {std::pair<bool, std::string>(false, small), {true, TEST_DATA "/declarations.xml"}}) {
    loadFile(file.c_str());  // its bytes stay until the next load
    captured.take();
    if (isStarted) {
      XMLPlatformUtils::Initialize();
    }
    int outcome = ended;
    for (std::size_t n = 1; outcome != untouched && n < 10'000; n += isSlow ? 7 : 1) {
      for (const std::size_t last : {n, never}) {
        outcome = outcomeOf(file, isStarted, n, last);
        EXPECT_TRUE(outcome >= untouched && outcome <= noMemory)
            << file << ", allocation " << n << (last == n ? ": " : " and all after it: ") << outcome;
      }
    }
    EXPECT_EQ(outcome, untouched);
    if (isStarted) {
      XMLPlatformUtils::Terminate();
    }
  }
}

// The first allocation after the conversion of a diagnostic stores the diagnostic.
TEST_F(FailingLoad, ThrowsWhenADiagnosticCannotBeStored) {
  const std::string file = directory.write("manifest.xml", "<r></s>");
  raiseAt("expected end of tag 'r'", [] { allocations = 0, firstBad = lastBad = 1; });
  EXPECT_THROW(qzjexxml::loadManifest(file), std::bad_alloc);
  firstBad = never;
}

// Another start or stop of Xerces-C would crash.
TEST_F(FailingLoad, LeavesAHalfStartedXercesAlone) {
  EXPECT_EXIT(
      {
        onStart = throwOutOfMemory;
        EXPECT_THROW(load(document), std::bad_alloc);
        onStart = [] { std::abort(); };
        EXPECT_THROW(load(document), std::bad_alloc);
        std::exit(testing::Test::HasFailure() || xercesc::XMLPlatformUtils::fgMemoryManager == nullptr ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
  captured.take();  // a warning of GoogleTest about forks
}

}  // namespace
