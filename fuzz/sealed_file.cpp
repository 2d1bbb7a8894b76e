#include "sealed_file.h"

#include <sodium.h>

#include <cstdlib>

namespace sealed {

std::string cheapStart() { return {"KIVBTC\1\0\1\0\0\0\x08\0\0\0", startSize}; }

std::string file(std::string_view plaintext, std::string_view passphrase, const std::string& start,
                 std::string_view saltAndNonce, unsigned passes, std::size_t memoryKib) {
  constexpr std::size_t tagSize = 16;
  std::string file = start;
  file += saltAndNonce;
  file.resize(headerSize + plaintext.size() + tagSize);
  auto* bytes = reinterpret_cast<unsigned char*>(file.data());
  unsigned char key[32];
  if (crypto_pwhash(key, sizeof key, passphrase.data(), passphrase.size(), bytes + startSize, passes, memoryKib * 1024,
                    crypto_pwhash_ALG_ARGON2ID13) != 0) {
    std::abort();
  }
  crypto_aead_xchacha20poly1305_ietf_encrypt(bytes + headerSize, nullptr,
                                             reinterpret_cast<const unsigned char*>(plaintext.data()), plaintext.size(),
                                             bytes, headerSize, nullptr, bytes + 32, key);
  return file;
}

}  // namespace sealed
