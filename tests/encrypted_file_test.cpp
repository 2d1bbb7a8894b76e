// The exported encryption functions over the stand-in of the crypto library.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

#include <qzjexxml/qzjexxml.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

char passphrase[] = "secret";
char otherPassphrase[] = "Secret";

class EncryptedFile : public testing::Test {
 protected:
  ScratchFolder folder;
  CapturedStderr captured;
};

TEST_F(EncryptedFile, ComesBackByteForByteUnderItsPassphraseOnly) {
  const std::string content("<r>\0\r\n</r>", 10);
  const std::string source = folder.write("a.xml", content);
  ASSERT_TRUE(EncryptFile(source.c_str(), passphrase));
  const std::string encrypted = folder.path("a.enc");
  const std::unique_ptr<char[]> text(DecryptXmlFile(encrypted.c_str(), passphrase));
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(std::string(text.get(), content.size() + 1), content + '\0');
  EXPECT_FALSE(DecryptFile(encrypted.c_str(), otherPassphrase));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path("")), {}), 2);
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
