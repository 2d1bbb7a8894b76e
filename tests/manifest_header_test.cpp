// The header for C++ programs, with the shared library.
#include "support/manifest_load.h"

#include <qzjexxml/manifest.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using namespace qzjexxml;

static_assert(std::is_nothrow_move_constructible_v<Manifest> && std::is_nothrow_move_assignable_v<Manifest>);

class ManifestHeader : public ManifestLoad {
 protected:
  // The call throws an Error with this text and restores the buffer of std::cerr.
  template <typename Error, typename Call>
  Error expectError(const std::string& text, Call call, std::source_location caller = std::source_location::current()) {
    const testing::ScopedTrace trace(caller.file_name(), static_cast<int>(caller.line()), "called");
    try {
      call();
    } catch (const Error& error) {
      EXPECT_EQ(error.what(), text);
      std::cerr << "next";
      EXPECT_EQ(captured.take(), "next");
      return error;
    }
    throw std::runtime_error("nothing was thrown");
  }
};

TEST_F(ManifestHeader, OwnsTheRecord) {
  Manifest manifest = loadManifest(directory.write(
      "manifest.xml",
      "<r><kiv><rootmacro><data name='N' abspath='/n'/></rootmacro><filemap><root path='r'><data dir_name='d' "
      "file_name='f'/></root></filemap><varnixpath><data path='s'/></varnixpath></kiv></r>"));
  Manifest moved = std::move(manifest);
  EXPECT_EQ(moved.rootMacros().at("N"), "/n");
  EXPECT_EQ(moved.fileMap().at("r/d/f").target, "d/f");
  EXPECT_EQ(moved.searchPath().at(0), "s");
  moved = loadManifest(directory.write("good.xml", good));
  EXPECT_TRUE(moved.rootMacros().empty());
  for (const auto& path : loadManifest(directory.path("good.xml")).searchPath()) {
    EXPECT_EQ(path, "here");
  }
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ManifestHeader, ThrowsTheDiagnosticsOfALoad) {
  const std::string invalid = directory.write("invalid.xml", "<!DOCTYPE a [<!ELEMENT a EMPTY>]>\n<a b='1'>\n<c/></a>");
  const std::string broken = directory.write("broken.xml", "<a>\n</b>");
  const std::string place = directory.path("\"JexXml\", line 1, column 2");
  for (const auto load : {+[](const std::string& name) { loadManifest(name); }, checkProject}) {
    auto error = expectError<LoadError>(
        "Fatal Error at file \"JexXml\", line 2, column 3\n   Message: expected end of tag 'a'\nError buiding DOM",
        [&] { load(broken); });
    EXPECT_TRUE(error.line() == 2 && error.column() == 3);
    error =
        expectError<LoadError>("Could not open file: " + place + "\nError building input source", [&] { load(place); });
    EXPECT_TRUE(error.line() == 0 && error.column() == 0);
    try {
      load(invalid);
      ADD_FAILURE();
    } catch (const LoadError& several) {  // the position of the first error counts
      EXPECT_TRUE(several.line() == 2 && several.column() == 10) << several.line() << ':' << several.column();
    }
  }
  checkProject(EXAMPLES "/project.xml");
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ManifestHeader, ReadsEncryptsAndDecryptsFiles) {
  const std::string bytes("\0<\xFF", 3);
  const std::string file = directory.write("a.xml", bytes);
  EXPECT_EQ(readFile(file), bytes);
  encryptFile(file, "passphrase");
  EXPECT_EQ(decryptFile(directory.path("a.enc"), "passphrase"), bytes);
  expectError<std::runtime_error>("Nothing to read!", [&] { readFile(directory.write("empty", "")); });
  expectError<std::runtime_error>("Could not open file: missing", [] { encryptFile("missing", "passphrase"); });
  for (const char* name : {"a.enc", "a.xml"}) {
    expectError<std::runtime_error>("the crypto library refuses the passphrase or the file",
                                    [&] { decryptFile(directory.path(name), "another"); });
  }
  expectError<std::runtime_error>("the passphrase contains a NUL byte", [&] { encryptFile(file, {"a\0b", 3}); });
}

}  // namespace
