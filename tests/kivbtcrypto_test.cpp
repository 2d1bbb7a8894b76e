// The stand-in for libqzkivbtcrypto.
#include <kivbtcrypto.h>

#include <gtest/gtest.h>
#include <sodium.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

KIVByteArray arrayOf(const std::string& text) { return {text.data(), static_cast<std::uint32_t>(text.size())}; }

std::string textOf(const KIVByteArray& array) { return {array.data, array.length}; }

constexpr std::size_t headerSize = 56;

// The first 16 bytes: magic, format, passes and memory at the least cost there is.
const std::string cheapHeader("KIVBTC\1\0\1\0\0\0\x08\0\0\0", 16);

// A file as the format's description has it, made by libsodium alone. It authenticates whatever its header says,
// if the key is derived at these costs.
std::string sealedFile(const std::string& plaintext, const std::string& passphrase,
                       const std::string& header = cheapHeader, unsigned passes = 1, std::size_t memoryKib = 8) {
  std::string file = header + "0123456789abcdef" + "nonce of twenty-four bytes";
  file.resize(headerSize);
  unsigned char key[32];
  EXPECT_EQ(crypto_pwhash(key, sizeof key, passphrase.data(), passphrase.size(),
                          reinterpret_cast<const unsigned char*>(&file[16]), passes, memoryKib * 1024,
                          crypto_pwhash_ALG_ARGON2ID13),
            0);
  std::string data(plaintext.size() + 16, '\0');
  crypto_aead_xchacha20poly1305_ietf_encrypt(reinterpret_cast<unsigned char*>(data.data()), nullptr,
                                             reinterpret_cast<const unsigned char*>(plaintext.data()), plaintext.size(),
                                             reinterpret_cast<const unsigned char*>(file.data()), headerSize, nullptr,
                                             reinterpret_cast<const unsigned char*>(&file[32]), key);
  return file + data;
}

class Decryption : public testing::Test {
 protected:
  bool decrypt(const std::string& file) {
    KIVByteArray input = arrayOf(file);
    return kivbtcPassphraseDecrypt(input, output, passphrase);
  }

  void expectRefused(const std::string& file) {
    output = KIVByteArray("stale", 5);
    EXPECT_FALSE(decrypt(file));
    EXPECT_EQ(output.length, 0u);
    EXPECT_EQ(output.data, nullptr);
  }

  KIVByteArray passphrase = arrayOf("secret");
  KIVByteArray output = arrayOf("stale");
};

TEST_F(Decryption, GivesThePlaintext) {
  for (const std::string& plaintext : {std::string("<r/>"), std::string("\0a\0", 3), std::string()}) {
    EXPECT_TRUE(decrypt(sealedFile(plaintext, "secret")));
    EXPECT_EQ(textOf(output), plaintext);
  }
}

TEST_F(Decryption, RefusesEveryFileThatIsNotWhole) {
  const std::string file = sealedFile("<r/>", "secret");
  for (std::size_t i = 0; i < file.size(); ++i) {
    std::string changed = file;
    changed[i] = static_cast<char>(changed[i] ^ 1);
    expectRefused(changed);
    expectRefused(file.substr(0, i));
  }
  expectRefused(file + '\0');
  expectRefused(sealedFile("<r/>", "Secret"));
}

// Every one of these files would authenticate.
TEST_F(Decryption, RefusesHeadersBeyondTheFormat) {
  const auto header = [](std::size_t offset, const char* bytes) {
    return std::string(cheapHeader).replace(offset, 4, bytes, 4);
  };
  EXPECT_TRUE(decrypt(sealedFile("<r/>", "secret", header(8, "\x0A\0\0\0"), 10)));
  expectRefused(sealedFile("<r/>", "secret", header(8, "\x0B\0\0\0"), 11));
  expectRefused(sealedFile("<r/>", "secret", header(12, "\1\0\4\0"), 1, 256 * 1024 + 1));
  expectRefused(sealedFile("<r/>", "secret", header(0, "kIVB")));
  expectRefused(sealedFile("<r/>", "secret", header(4, "TC\2\0")));
  expectRefused(sealedFile("<r/>", "secret", header(4, "TC\1\1")));
  for (const char* cost : {"\0\0\0\0", "\7\0\0\0", "\xFF\xFF\xFF\xFF"}) {  // which no key can be derived at
    expectRefused(sealedFile("<r/>", "secret", header(12, cost)));
  }
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
  EXPECT_EQ(first.length, headerSize + 4 + 16);
  EXPECT_NE(textOf(first).substr(16, 16), textOf(second).substr(16, 16));
  EXPECT_NE(textOf(first).substr(32, 12), textOf(second).substr(32, 12));
  EXPECT_NE(textOf(first).substr(44, 12), textOf(second).substr(44, 12));
  EXPECT_EQ(textOf(input), "<r/>");
  ASSERT_TRUE(kivbtcPassphraseDecrypt(second, second, passphrase));
  EXPECT_EQ(textOf(second), "<r/>");
}

TEST(Encryption, RefusesAnEmptyPassphrase) {
  KIVByteArray input = arrayOf("<r/>");
  KIVByteArray passphrase;
  KIVByteArray output = arrayOf("stale");
  EXPECT_FALSE(kivbtcPassphraseEncrypt(input, output, passphrase));
  EXPECT_EQ(output.length, 0u);
  KIVByteArray file = arrayOf(sealedFile("<r/>", ""));
  EXPECT_FALSE(kivbtcPassphraseDecrypt(file, output, passphrase));
}

}  // namespace
