// The stub for libqzkivbtcrypto.
#include "sealed_file.h"

#include <kivbtcrypto.h>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>

#include <fstream>
#include <iterator>
#include <new>
#include <string>

namespace {

KIVByteArray arrayOf(const std::string& text) { return {text.data(), static_cast<std::uint32_t>(text.size())}; }

std::string textOf(const KIVByteArray& array) { return {array.data, array.length}; }

std::string sealedFile(const std::string& plaintext, const std::string& passphrase,
                       const std::string& start = sealed::cheapStart(), unsigned passes = 1,
                       std::size_t memoryKib = 8) {
  return sealed::file(plaintext, passphrase, start, "salt of 16 bytes, nonce of 24 bytes.....", passes, memoryKib);
}

class Decryption : public testing::Test {
 protected:
  bool decrypt(const std::string& file) {
    KIVByteArray input = arrayOf(file);
    return kivbtcPassphraseDecrypt(input, output, passphrase);
  }

  void expectRejected(const std::string& file) {
    output = KIVByteArray("stale", 5);
    EXPECT_FALSE(decrypt(file));
    EXPECT_EQ(output.length, 0u);
    EXPECT_EQ(output.data, nullptr);
  }

  KIVByteArray passphrase = arrayOf("secret");
  KIVByteArray output = arrayOf("stale");
};

TEST_F(Decryption, ReturnsThePlaintext) {
  for (const std::string& plaintext : {std::string("<r/>"), std::string("\0a\0", 3), std::string()}) {
    EXPECT_TRUE(decrypt(sealedFile(plaintext, "secret")));
    EXPECT_EQ(textOf(output), plaintext);
  }
}

TEST_F(Decryption, RejectsEveryIncompleteOrChangedFile) {
  const std::string file = sealedFile("<r/>", "secret");
  for (std::size_t i = 0; i < file.size(); ++i) {
    std::string changed = file;
    changed[i] = static_cast<char>(changed[i] ^ 1);
    expectRejected(changed);
    expectRejected(file.substr(0, i));
  }
  expectRejected(file + '\0');
  expectRejected(sealedFile("<r/>", "Secret"));
  passphrase.clear();
  expectRejected(sealedFile("<r/>", ""));
}

// These files would authenticate: only the header is invalid.
TEST_F(Decryption, RejectsHeadersBeyondTheFormat) {
  const auto header = [](std::size_t offset, const char* bytes) {
    return sealed::cheapStart().replace(offset, 4, bytes, 4);
  };
  EXPECT_TRUE(decrypt(sealedFile("<r/>", "secret", header(8, "\x0A\0\0\0"), 10)));
  expectRejected(sealedFile("<r/>", "secret", header(8, "\x0B\0\0\0"), 11));
  expectRejected(sealedFile("<r/>", "secret", header(12, "\1\0\4\0"), 1, 256 * 1024 + 1));
  expectRejected(sealedFile("<r/>", "secret", header(0, "kIVB")));
  expectRejected(sealedFile("<r/>", "secret", header(4, "TC\2\0")));
  expectRejected(sealedFile("<r/>", "secret", header(4, "TC\1\1")));
  for (const char* cost : {"\0\0\0\0", "\7\0\0\0", "\xFF\xFF\xFF\xFF"}) {  // no key can be derived with these costs
    expectRejected(sealedFile("<r/>", "secret", header(12, cost)));
  }
}

TEST_F(Decryption, AcceptsHighCostsAndThrowsWithoutMemory) {
  const std::string file =
      sealedFile("<r/>", "secret", sealed::cheapStart().replace(12, 4, "\0\0\4\0", 4), 1, 256 * 1024);
  EXPECT_TRUE(decrypt(file));
#if !defined(__SANITIZE_ADDRESS__)
  rlimit before{};
  getrlimit(RLIMIT_AS, &before);
  const rlimit none = {.rlim_cur = 1, .rlim_max = before.rlim_max};
  setrlimit(RLIMIT_AS, &none);
  if (mmap(nullptr, 1, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED) {  // qemu-user ignores the limit
    EXPECT_THROW(decrypt(file), std::bad_alloc);
  }
  setrlimit(RLIMIT_AS, &before);
#endif
}

TEST_F(Decryption, ReadsTheCommittedExample) {
  passphrase = arrayOf("correct horse battery staple");
  std::ifstream stream(TEST_DATA "/format-1.enc", std::ios::binary);
  EXPECT_TRUE(decrypt({std::istreambuf_iterator<char>(stream), {}}));
  EXPECT_EQ(textOf(output), "<doc_root/>\n");
}

TEST(Encryption, WritesTheFormatAndNeverTheSameBytes) {
  KIVByteArray input = arrayOf("<r/>");
  KIVByteArray passphrase = arrayOf("secret");
  KIVByteArray first;
  KIVByteArray second = arrayOf("stale");
  ASSERT_TRUE(kivbtcPassphraseEncrypt(input, first, passphrase));
  ASSERT_TRUE(kivbtcPassphraseEncrypt(input, second, passphrase));
  EXPECT_EQ(textOf(first).substr(0, 16), std::string("KIVBTC\1\0\3\0\0\0\0\0\1\0", 16));
  EXPECT_EQ(first.length, sealed::headerSize + 4 + 16);
  EXPECT_NE(textOf(first).substr(16, 16), textOf(second).substr(16, 16));
  EXPECT_NE(textOf(first).substr(32, 12), textOf(second).substr(32, 12));
  EXPECT_NE(textOf(first).substr(44, 12), textOf(second).substr(44, 12));
  EXPECT_EQ(textOf(input), "<r/>");
  ASSERT_TRUE(kivbtcPassphraseDecrypt(second, second, passphrase));
  EXPECT_EQ(textOf(second), "<r/>");
  passphrase.clear();
  EXPECT_FALSE(kivbtcPassphraseEncrypt(input, second, passphrase));
  EXPECT_EQ(second.length, 0u);
}

}  // namespace
