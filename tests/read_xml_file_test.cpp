// Both exported ReadXmlFile functions.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

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

class ReadXmlFileTest : public testing::Test {
 protected:
  // Both functions fail with the message, and the array keeps what it held.
  void expectFailure(const char* fileName, const std::string& message) {
    KIVByteArray array("kept", 4);
    EXPECT_FALSE(ReadXmlFile(fileName, array));
    EXPECT_EQ(captured.take(), message + '\n');
    EXPECT_EQ(std::string(array.data, array.length), "kept");
    EXPECT_EQ(ReadXmlFile(fileName), nullptr);
    EXPECT_EQ(captured.take(), message + '\n');
  }

  ScratchFolder folder;
  CapturedStderr captured;
};

TEST_F(ReadXmlFileTest, GivesEveryByte) {
  const std::string content("a\0\r\n\xFF", 5);
  const std::string file = folder.write("file", content);
  KIVByteArray array("old", 3);
  EXPECT_TRUE(ReadXmlFile(file.c_str(), array));
  EXPECT_EQ(std::string(array.data, array.length), content);
  const std::unique_ptr<char[]> text(ReadXmlFile(file.c_str()));
  EXPECT_EQ(std::string(text.get(), 6), content + '\0');
  EXPECT_EQ(captured.take(), "");
}

TEST_F(ReadXmlFileTest, SaysWhyItFailed) {
  expectFailure(nullptr, "Parameter Error!");
  expectFailure("", "Parameter Error!");
  expectFailure("missing.xml", "Could not open file: missing.xml");
  expectFailure(folder.write("empty", "").c_str(), "Nothing to read!");
  expectFailure(folder.path("").c_str(), "Nothing to read!");
  expectFailure("/dev/zero", "Nothing to read!");
  expectFailure("/proc/self/mem", "Nothing to read!");
  const std::string name = folder.path("socket");
  sockaddr_un address = {AF_UNIX, {}};
  name.copy(address.sun_path, sizeof address.sun_path - 1);
  const int socketDescriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(socketDescriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  expectFailure(name.c_str(), "Could not open file: " + name);
  close(socketDescriptor);
  ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
  expectFailure(folder.path("pipe").c_str(), "Nothing to read!");
  const std::string huge = folder.write("huge", "x");
  std::filesystem::resize_file(huge, std::uintmax_t{1} << 31);
  expectFailure(huge.c_str(), "Nothing to read!");
}

}  // namespace
