// The arguments for the crypto library, and the use of its results. This program defines the two functions of the
// crypto library itself.
#include "filestore/encrypted_file.h"
#include "support/captured_stderr.h"
#include "support/scratch_directory.h"

#include <kivbtcrypto.h>
#include <qzjexxml/qzjexxml.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace {

std::string textOf(const KIVByteArray& array) { return {array.data, array.length}; }

// Called by both functions.
std::function<bool(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase)> crypto;

std::string wiped;

}  // namespace

// Replaces the function of the C library.
extern "C" void explicit_bzero(void* bytes, std::size_t count) noexcept {
  for (auto* byte = static_cast<volatile char*>(bytes); count > 0; --count, ++byte) {
    wiped += *byte;
    *byte = '\0';
  }
  wiped += '|';
}

// Its name in builds with _FORTIFY_SOURCE.
extern "C" void __explicit_bzero_chk(void* bytes, std::size_t count, std::size_t) noexcept {
  explicit_bzero(bytes, count);
}

bool kivbtcPassphraseEncrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
  return crypto(input, output, passphrase);
}

bool kivbtcPassphraseDecrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
  return crypto(input, output, passphrase);
}

namespace {

char phrase[] = "p\xE9";

class CryptoCalls : public testing::Test {
 protected:
  void SetUp() override {
    crypto = [this](KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
      handedOver = textOf(input) + '|' + textOf(output) + '|' + textOf(passphrase);
      output = KIVByteArray("result", 6);
      return works;
    };
  }

  ScratchDirectory directory;
  CapturedStderr captured;
  std::string handedOver;
  bool works = true;
};

TEST_F(CryptoCalls, ReceiveTheBytesThePassphraseAndAnEmptyOutput) {
  const std::string file = directory.write("a.xml", std::string("a\0b", 3));
  const std::string expected = std::string("a\0b", 3) + "||p\xE9";
  EXPECT_TRUE(EncryptFile(file.c_str(), phrase));
  EXPECT_EQ(handedOver, expected);
  EXPECT_EQ(wiped, "p\xE9|" + std::string("a\0b|", 4));
  EXPECT_EQ(directory.read("a.enc"), "result");
  handedOver.clear();
  wiped.clear();
  EXPECT_TRUE(DecryptFile(file.c_str(), phrase));
  EXPECT_EQ(handedOver, expected);
  EXPECT_EQ(wiped, "p\xE9|result|");
  wiped.clear();
  delete[] DecryptXmlFile(file.c_str(), phrase);
  EXPECT_EQ(wiped, "p\xE9|result|");
  KIVByteArray output("old", 3);
  char noPhrase[] = "";
  EXPECT_TRUE(DecryptXmlFile(file.c_str(), output, noPhrase));
  EXPECT_EQ(handedOver, std::string("a\0b", 3) + "|old|");
  EXPECT_EQ(textOf(output), "result");
}

TEST_F(CryptoCalls, ChangeNoFileIfTheyFail) {
  works = false;
  const std::string file = directory.write("a.xml", "a");
  EXPECT_FALSE(EncryptFile(file.c_str(), phrase) || DecryptXmlFile(file.c_str(), phrase) != nullptr);
  EXPECT_FALSE(std::filesystem::exists(directory.path("a.enc")));
  EXPECT_EQ(captured.take(), "");
}

TEST_F(CryptoCalls, MayReturnNothingOrABlockThatIsNotOwned) {
  const std::string file = directory.write("a.xml", "a");
  static char block[] = "static";
  std::uint32_t length = 0;
  crypto = [&length](KIVByteArray&, KIVByteArray& output, KIVByteArray&) {
    output.data = length == 0 ? nullptr : block;
    output.length = length;
    output.owns = false;
    return true;
  };
  EXPECT_EQ(DecryptXmlFile(file.c_str(), phrase), nullptr);
  length = 6;
  EXPECT_TRUE(DecryptFile(file.c_str(), phrase) && EncryptFile(file.c_str(), phrase));
  EXPECT_EQ(directory.read("a.enc"), "static");
}

TEST_F(CryptoCalls, NameTheEncryptedFile) {
  const std::pair<const char*, const char*> names[] = {
      {"a.xml", "a.enc"},     {"a.txt", "a.txt.enc"},     {"a.enc", "a.enc.enc"},
      {"a.XML", "a.XML.enc"}, {"x.xml.bak", "x.enc.bak"}, {"d.xmlx", "d.encx"},
      {"a", "a.enc"},         {"a.xml.xml", "a.enc.xml"}, {"c.xml/a.xml", "c.enc/a.xml"},
  };
  for (const auto& [source, encrypted] : names) {
    EXPECT_EQ(jexxml::encryptedFileName(source), encrypted);
  }
  std::filesystem::create_directory(directory.path("c.xml"));
  const std::string file = directory.write("c.xml/a.xml", "a");
  KIVByteArray output;
  EXPECT_FALSE(jexxml::EncryptXmlFile(file.c_str(), output, phrase));
  EXPECT_EQ(textOf(output), "result");
  EXPECT_EQ(captured.take(), "Could not open file: " + directory.path("c.enc/a.xml") + '\n');
}

TEST_F(CryptoCalls, WriteXmlFileReplacesAFile) {
  const std::string file = directory.write("t", "longer than before");
  EXPECT_TRUE(jexxml::WriteXmlFile(file.c_str(), "text"));
  EXPECT_EQ(directory.read("t"), "text");
  EXPECT_FALSE(jexxml::WriteXmlFile(file.c_str(), "") || jexxml::WriteXmlFile(nullptr, "t"));
  EXPECT_FALSE(jexxml::WriteXmlFile(directory.path("").c_str(), "t"));
  EXPECT_EQ(captured.take(), "Parameter Error!\nParameter Error!\nCould not open file: " + directory.path("") + '\n');
}

}  // namespace
