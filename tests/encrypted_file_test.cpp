// The exported encryption functions over the stand-in of the crypto library.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

#include <gtest/gtest.h>
#include <qzjexxml/qzjexxml.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

char passphrase[] = "secret";
char otherPassphrase[] = "Secret";
char noPassphrase[] = "";

class EncryptedFile : public testing::Test {
 protected:
  ScratchFolder folder;
  CapturedStderr captured;
};

TEST_F(EncryptedFile, ComesBackByteForByte) {
  for (const std::string& content : {std::string("\0", 1), std::string(65537, '\0') + "\r\nend"}) {
    const std::string source = folder.write("a.xml", content);
    ASSERT_TRUE(EncryptFile(source.c_str(), passphrase));
    EXPECT_EQ(folder.read("a.xml"), content);
    const std::string encrypted = folder.path("a.enc");
    KIVByteArray array("stale", 5);
    EXPECT_TRUE(DecryptXmlFile(encrypted.c_str(), array, passphrase));
    EXPECT_EQ(std::string(array.data, array.length), content);
    const std::unique_ptr<char[]> text(DecryptXmlFile(encrypted.c_str(), passphrase));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text.get(), content.size() + 1), content + '\0');
  }
  EXPECT_EQ(captured.take(), "");
}

TEST_F(EncryptedFile, IsCheckedWithoutWriting) {
  const std::string source = folder.write("a.xml", "<r/>");
  ASSERT_TRUE(EncryptFile(source.c_str(), passphrase));
  const std::string encrypted = folder.path("a.enc");
  EXPECT_TRUE(DecryptFile(encrypted.c_str(), passphrase));
  EXPECT_FALSE(DecryptFile(encrypted.c_str(), otherPassphrase));
  EXPECT_FALSE(DecryptFile(source.c_str(), passphrase));
  EXPECT_EQ(DecryptXmlFile(encrypted.c_str(), otherPassphrase), nullptr);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path("")), {}), 2);

  const std::string before = folder.read("a.enc");
  EXPECT_FALSE(EncryptFile(source.c_str(), noPassphrase));
  EXPECT_EQ(folder.read("a.enc"), before);
  ASSERT_TRUE(EncryptFile(source.c_str(), passphrase));
  EXPECT_NE(folder.read("a.enc"), before);
  EXPECT_EQ(captured.take(), "");
}

TEST_F(EncryptedFile, CannotBeMadeFromNothing) {
  const auto expectFailure = [this](const char* fileName, const std::string& message) {
    KIVByteArray array("kept", 4);
    EXPECT_FALSE(DecryptXmlFile(fileName, array, passphrase));
    EXPECT_EQ(std::string(array.data, array.length), "kept");
    EXPECT_EQ(DecryptXmlFile(fileName, passphrase), nullptr);
    EXPECT_FALSE(DecryptFile(fileName, passphrase));
    EXPECT_FALSE(EncryptFile(fileName, passphrase));
    EXPECT_EQ(captured.take(), message + message + message + message);
  };
  expectFailure(nullptr, "File name is null or empty!\n");
  expectFailure("", "File name is null or empty!\n");
  expectFailure("missing.xml", "Could not open file: missing.xml\n");
  expectFailure(folder.write("empty", "").c_str(), "Could not read file!\n");
  expectFailure(folder.path("").c_str(), "Could not read file!\n");
}

}  // namespace
