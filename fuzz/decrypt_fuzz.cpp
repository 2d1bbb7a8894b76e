// Feeds files to the decryption: the input as it is, of which only the seeds decrypt; and the input sealed into a
// good file, as a salt, a nonce and a plaintext, which must come back, and must not with one bit changed.
#include "in_memory_file.h"

#include <qzjexxml/qzjexxml.h>

#include <sodium.h>

#include <cstring>
#include <string>
#include <string_view>

namespace {

char passphrase[] = "secret";

void expect(bool condition) {
  if (!condition) {
    std::abort();
  }
}

// Whether `file` decrypts, and then to `plaintext`.
bool decryptsTo(std::string_view plaintext, const unsigned char* file, std::size_t size) {
  const InMemoryFile stored(file, size);
  KIVByteArray array;
  const bool decrypted = DecryptXmlFile(stored.path().c_str(), array, passphrase);
  expect(std::string_view(array.data, array.length) == (decrypted ? plaintext : ""));
  return decrypted;
}

// The layout of docs/encrypted-file-format.md, at the least cost there is.
constexpr std::size_t headerSize = 56;
constexpr std::size_t tagSize = 16;

std::string seal(const std::uint8_t* saltAndNonce, std::string_view plaintext) {
  std::string file("KIVBTC\1\0\1\0\0\0\x08\0\0\0", 16);
  file.append(reinterpret_cast<const char*>(saltAndNonce), headerSize - file.size());
  file.resize(headerSize + plaintext.size() + tagSize);
  auto* bytes = reinterpret_cast<unsigned char*>(file.data());
  unsigned char key[32];
  expect(crypto_pwhash(key, sizeof key, passphrase, std::strlen(passphrase), bytes + 16, 1, 8192,
                       crypto_pwhash_ALG_ARGON2ID13) == 0);
  crypto_aead_xchacha20poly1305_ietf_encrypt(bytes + headerSize, nullptr,
                                             reinterpret_cast<const unsigned char*>(plaintext.data()), plaintext.size(),
                                             bytes, headerSize, nullptr, bytes + 32, key);
  return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // More than one pass, little-endian at offset 8, over 64 MiB or more, in KiB at offset 12, would only
  // slow the search down.
  if (size >= 16 && bytes[8] > 1 && bytes[9] == 0 && bytes[14] != 0) {
    return -1;
  }
  decryptsTo("<r/>", bytes, size);
  constexpr std::size_t saltAndNonce = 40;
  if (size > saltAndNonce) {
    const std::string_view plaintext(reinterpret_cast<const char*>(bytes) + saltAndNonce, size - saltAndNonce);
    std::string file = seal(bytes, plaintext);
    const auto* sealed = reinterpret_cast<const unsigned char*>(file.data());
    expect(decryptsTo(plaintext, sealed, file.size()));
    // Not in the costs, which then would be paid.
    const std::size_t place = 16 + (bytes[0] * 256U + bytes[1]) % (file.size() - 16);
    file[place] = static_cast<char>(file[place] ^ (1 << bytes[2] % 8));
    expect(!decryptsTo(plaintext, sealed, file.size()));
  }
  return 0;
}
