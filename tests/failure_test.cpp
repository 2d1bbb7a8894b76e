// Loads in which something below the library fails: a conversion, the start of the parser library, an
// allocation. The program defines libnuvo's functions itself, so that a conversion can do anything.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <nuvo.h>
#include <qzjexxml/qzjexxml.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>

namespace {

// Called before each conversion with the text to convert; what it throws is thrown there, and the
// conversion gives null when it returns false.
std::function<bool(const std::string&)> onConversion;
int textsAlive = 0;

[[noreturn]] void throwXmlException() {
  using namespace xercesc;
  ThrowXML1(RuntimeException, XMLExcepts::File_CouldNotOpenFile, u"x");
}

bool parserLibraryStarts = true;
bool nothrowNewWorks = true;

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

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return nothrowNewWorks ? ::operator new(size) : nullptr;
}

// Stands before the parser library's own function, which it calls.
void xercesc::XMLPlatformUtils::Initialize(const char* locale, const char* home, PanicHandler* panicHandler,
                                           MemoryManager* memoryManager) {
  static const auto start = reinterpret_cast<void (*)(const char*, const char*, PanicHandler*, MemoryManager*)>(
      dlsym(RTLD_NEXT, "_ZN11xercesc_3_216XMLPlatformUtils10InitializeEPKcS2_PNS_12PanicHandlerEPNS_13MemoryManagerE"));
  start(locale, home, panicHandler, memoryManager);
  if (!parserLibraryStarts) {
    parserLibraryStarts = true;
    throwXmlException();
  }
}

namespace {

class FailingLoad : public testing::Test {
 protected:
  void TearDown() override {
    onConversion = nullptr;
    EXPECT_EQ(textsAlive, 0);
  }

  std::string loadSearchPath() {
    const std::string file = folder.write("manifest.xml",
                                          "<r><kiv><varnixpath><data path='a'/></varnixpath></kiv>"
                                          "<kiv><varnixpath><stop/><data path='b'/></varnixpath></kiv></r>");
    KIVData* handle = nullptr;
    EXPECT_EQ(InitKIVData(file.c_str(), &handle), 1);
    std::string text;
    for (const std::string& path : handle->varnixPath) {
      text += path;
    }
    TermKIVData(&handle);
    return text;
  }

  void expectWholeLoad() {
    onConversion = nullptr;
    EXPECT_EQ(loadSearchPath(), "ab");
    EXPECT_EQ(captured.take(), "");
  }

  ScratchFolder folder;
  CapturedStderr captured;
};

[[noreturn]] void throwDomException() { throw xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR); }

[[noreturn]] void throwOther() { throw std::bad_alloc(); }

struct BuildException {
  const char* name;
  void (*raise)();
  const char* messages;
};

void PrintTo(const BuildException& exception, std::ostream* stream) { *stream << exception.name; }

class FailingBuild : public FailingLoad, public testing::WithParamInterface<BuildException> {
 protected:
  void SetUp() override {
    onConversion = [](const std::string& text) {
      if (text == "stop") {
        GetParam().raise();
      }
      return true;
    };
  }
};

TEST_P(FailingBuild, KeepsWhatWasBuiltOfTheManifest) {
  EXPECT_EQ(loadSearchPath(), "a");
  EXPECT_EQ(captured.take(), GetParam().messages);
  expectWholeLoad();
}

TEST_P(FailingBuild, IsReportedForTheProject) {
  const std::string file = folder.write("project.xml", "<r><dependency><stop/></dependency></r>");
  void* handle = nullptr;
  EXPECT_EQ(InitNOXData(file.c_str(), &handle), 0);
  EXPECT_EQ(captured.take(), GetParam().messages);
}

const BuildException exceptions[] = {
    {"XmlException", throwXmlException,
     "An error occurred Inside buildKivMaster \n \n\nMessage: unable to open file 'x'\n"},
    {"DomException", throwDomException, "A DOM error occurred Inside buildKivMaster \n \nDOMException code: 8\n"},
    {"Other", throwOther, "An error occurred Inside buildKivMaster \n \n"},
};

INSTANTIATE_TEST_SUITE_P(Kinds, FailingBuild, testing::ValuesIn(exceptions),
                         [](const auto& instance) { return instance.param.name; });

TEST_F(FailingLoad, LeavesAnExceptionFromTheNameTableToTheCaller) {
  onConversion = [](const std::string& text) { return text == "security" ? throw std::bad_alloc() : true; };
  EXPECT_THROW(loadSearchPath(), std::bad_alloc);
  EXPECT_EQ(captured.take(), "");
  expectWholeLoad();
}

TEST_F(FailingLoad, GoesOnWithoutWhatCannotBeConverted) {
  onConversion = [](const std::string& text) { return text != "path" && text != "stop"; };
  EXPECT_EQ(loadSearchPath(), "");
  const std::string unset = "\nOwner Node and Attribute Name Not Set!\n";
  const std::string unbuilt = "Attribute has not been built!\n";
  EXPECT_EQ(captured.take(), unset + unset + unbuilt + unbuilt);
  onConversion = [](const std::string& text) { return text != "a"; };
  EXPECT_EQ(loadSearchPath(), "b");
  onConversion = [](const std::string&) { return false; };
  EXPECT_EQ(loadSearchPath(), "");
  EXPECT_EQ(captured.take(), unset + unset + unset + unset);  // the root's attributes
  expectWholeLoad();
}

TEST_F(FailingLoad, SaysThatTheNameTableCannotBeAllocated) {
  nothrowNewWorks = false;
  EXPECT_EQ(loadSearchPath(), "");
  nothrowNewWorks = true;
  EXPECT_EQ(captured.take(), "Error Allocating Common Strings\n");
  expectWholeLoad();
}

TEST_F(FailingLoad, SaysThatTheParserLibraryDoesNotStart) {
  parserLibraryStarts = false;
  EXPECT_EQ(loadSearchPath(), "");
  EXPECT_EQ(captured.take(), "Error during Xerces-c Initialization.\n  Exception message:unable to open file 'x'\n");
  expectWholeLoad();
}

}  // namespace
