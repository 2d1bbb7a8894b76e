// The exported functions that read, encrypt and decrypt whole files, with the stub of the crypto library.
#include "support/captured_stderr.h"
#include "support/scratch_directory.h"

#include <qzjexxml/qzjexxml.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

char passphrase[] = "secret";
char otherPassphrase[] = "Secret";

class WholeFiles : public testing::Test {
 protected:
  // All functions fail with these messages, and leave arrays unchanged.
  void expectFailure(const char* fileName, const std::string& whenReading, const std::string& whenDecrypting) {
    KIVByteArray array("kept", 4);
    EXPECT_FALSE(ReadXmlFile(fileName, array));
    EXPECT_EQ(ReadXmlFile(fileName), nullptr);
    EXPECT_EQ(captured.take(), whenReading + '\n' + whenReading + '\n');
    EXPECT_FALSE(DecryptXmlFile(fileName, array, passphrase));
    EXPECT_EQ(DecryptXmlFile(fileName, passphrase), nullptr);
    EXPECT_FALSE(DecryptFile(fileName, passphrase));
    EXPECT_FALSE(EncryptFile(fileName, passphrase));
    const std::string line = whenDecrypting + '\n';
    EXPECT_EQ(captured.take(), line + line + line + line);
    EXPECT_EQ(std::string(array.data, array.length), "kept");
  }

  void expectNothing(const std::string& file) {
    expectFailure(file.c_str(), "Nothing to read!", "Could not read file!");
  }

  void expectUnopened(const std::string& file) {
    expectFailure(file.c_str(), "Could not open file: " + file, "Could not open file: " + file);
  }

  ScratchDirectory directory;
  CapturedStderr captured;
};

TEST_F(WholeFiles, AreReturnedByteForByte) {
  const std::string content("<r>\0\r\n\xFF</r>", 11);
  const std::string source = directory.write("a.xml", content);
  KIVByteArray array("old", 3);
  EXPECT_TRUE(ReadXmlFile(source.c_str(), array));
  EXPECT_EQ(std::string(array.data, array.length), content);
  ASSERT_TRUE(EncryptFile(source.c_str(), passphrase));
  const std::string encrypted = directory.path("a.enc");
  for (const char* text : {ReadXmlFile(source.c_str()), DecryptXmlFile(encrypted.c_str(), passphrase)}) {
    const std::unique_ptr<const char[]> owner(text);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, content.size() + 1), content + '\0');
  }
  EXPECT_FALSE(DecryptFile(encrypted.c_str(), otherPassphrase));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path("")), {}), 2);
  EXPECT_EQ(captured.take(), "");

  std::filesystem::remove(encrypted);
  std::filesystem::create_hard_link(source, encrypted);
  EXPECT_FALSE(EncryptFile(source.c_str(), passphrase));
  EXPECT_EQ(captured.take(), "Could not open file: " + encrypted + '\n');
  EXPECT_EQ(std::filesystem::file_size(source), content.size());
}

TEST_F(WholeFiles, AreReportedIfTheyCannotBeRead) {
  expectFailure(nullptr, "Parameter Error!", "File name is null or empty!");
  expectFailure("", "Parameter Error!", "File name is null or empty!");
  expectUnopened("missing.xml");
  expectNothing(directory.write("empty", ""));
  expectNothing(directory.path(""));
  expectNothing("/dev/zero");
  expectNothing("/proc/self/mem");
  ASSERT_EQ(mkfifo(directory.path("pipe").c_str(), 0600), 0);
  expectNothing(directory.path("pipe"));
  const std::string huge = directory.write("huge", "x");
  std::filesystem::resize_file(huge, std::uintmax_t{1} << 31);
  expectNothing(huge);
  sockaddr_un address = {AF_UNIX, {}};
  directory.path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  expectUnopened(directory.path("socket"));
  close(descriptor);
}

}  // namespace
