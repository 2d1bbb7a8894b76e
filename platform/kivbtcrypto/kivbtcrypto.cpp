// An encrypted file is a header, the ciphertext, and a tag. All numbers are little-endian:
//
//   offset  bytes
//        0      6  magic "KIVBTC"
//        6      2  format number, 1
//        8      4  passes of the key derivation
//       12      4  its memory in KiB
//       16     16  its salt
//       32     24  nonce
//       56      n  ciphertext, as long as the plaintext
//     56+n     16  tag
//
// The key is Argon2id of the passphrase; the cipher is XChaCha20-Poly1305 with the whole header as
// associated data, so that a changed header fails like changed data.
#include "kivbtcrypto.h"

#include <sodium.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace {

// The costs of new files: the second recommendation of RFC 9106.
constexpr std::uint32_t passes = 3;
constexpr std::uint32_t memoryKib = 64 * 1024;

// The highest costs accepted in a file: they bound what a hostile file can make a key derivation cost.
constexpr std::uint32_t maximumPasses = 10;
constexpr std::uint32_t maximumMemoryKib = 256 * 1024;

constexpr std::array<unsigned char, 8> magicAndFormat = {'K', 'I', 'V', 'B', 'T', 'C', 1, 0};
constexpr std::size_t passesOffset = 8;
constexpr std::size_t memoryOffset = 12;
constexpr std::size_t saltOffset = 16;
constexpr std::size_t nonceOffset = saltOffset + crypto_pwhash_argon2id_SALTBYTES;
constexpr std::size_t headerSize = nonceOffset + crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t tagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
static_assert(headerSize == 56 && tagSize == 16);

void storeNumber(unsigned char* bytes, std::uint32_t number) {
  for (unsigned i = 0; i < 4; ++i) {
    bytes[i] = static_cast<unsigned char>(number >> (8 * i));
  }
}

std::uint32_t loadNumber(const unsigned char* bytes) {
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    number |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
  }
  return number;
}

unsigned char* bytesOf(KIVByteArray& array) { return reinterpret_cast<unsigned char*>(array.data); }

// The key derived from a header and a passphrase; its destructor wipes it.
class Key {
 public:
  // libsodium fails only when it is out of memory: the header is checked before.
  Key(const unsigned char* header, const KIVByteArray& passphrase) {
    if (crypto_pwhash(bytes.data(), bytes.size(), passphrase.data, passphrase.length, header + saltOffset,
                      loadNumber(header + passesOffset), std::size_t{loadNumber(header + memoryOffset)} * 1024,
                      crypto_pwhash_ALG_ARGON2ID13) != 0) {
      throw std::bad_alloc();
    }
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() { sodium_memzero(bytes.data(), bytes.size()); }

  const unsigned char* data() const { return bytes.data(); }

 private:
  std::array<unsigned char, crypto_aead_xchacha20poly1305_ietf_KEYBYTES> bytes;
};

bool isReadable(const unsigned char* header) {
  const std::uint32_t askedPasses = loadNumber(header + passesOffset);
  const std::uint32_t askedMemory = loadNumber(header + memoryOffset);
  return std::memcmp(header, magicAndFormat.data(), magicAndFormat.size()) == 0 &&
         askedPasses >= crypto_pwhash_argon2id_OPSLIMIT_MIN && askedPasses <= maximumPasses &&
         askedMemory >= crypto_pwhash_argon2id_MEMLIMIT_MIN / 1024 && askedMemory <= maximumMemoryKib;
}

KIVByteArray newArray(std::size_t size) {
  KIVByteArray array;
  if (size != 0) {
    array.data = new char[size];
    array.length = static_cast<std::uint32_t>(size);
  }
  return array;
}

bool encrypt(KIVByteArray& plaintext, KIVByteArray& file, const KIVByteArray& passphrase) {
  constexpr std::size_t largestPlaintext = std::numeric_limits<std::uint32_t>::max() - headerSize - tagSize;
  if (plaintext.length > largestPlaintext) {
    return false;
  }
  std::array<unsigned char, headerSize> header;
  std::memcpy(header.data(), magicAndFormat.data(), magicAndFormat.size());
  storeNumber(header.data() + passesOffset, passes);
  storeNumber(header.data() + memoryOffset, memoryKib);
  randombytes_buf(header.data() + saltOffset, headerSize - saltOffset);  // salt and nonce
  const Key key(header.data(), passphrase);
  file = newArray(headerSize + plaintext.length + tagSize);
  std::memcpy(file.data, header.data(), headerSize);
  return crypto_aead_xchacha20poly1305_ietf_encrypt(bytesOf(file) + headerSize, nullptr, bytesOf(plaintext),
                                                    plaintext.length, header.data(), headerSize, nullptr,
                                                    header.data() + nonceOffset, key.data()) == 0;
}

bool decrypt(KIVByteArray& file, KIVByteArray& plaintext, const KIVByteArray& passphrase) {
  if (file.length < headerSize + tagSize || !isReadable(bytesOf(file))) {
    return false;
  }
  const unsigned char* header = bytesOf(file);
  const Key key(header, passphrase);
  // libsodium checks the tag before it writes the plaintext.
  plaintext = newArray(file.length - headerSize - tagSize);
  return crypto_aead_xchacha20poly1305_ietf_decrypt(bytesOf(plaintext), nullptr, nullptr, header + headerSize,
                                                    file.length - headerSize, header, headerSize, header + nonceOffset,
                                                    key.data()) == 0;
}

// Encrypts or decrypts into a new array, so that `output` is empty on failure and may be the same array as `input`.
template <typename Operation>
bool run(Operation operation, KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
  KIVByteArray result;
  const bool done = passphrase.length != 0 && sodium_init() >= 0 && operation(input, result, passphrase);
  if (!done) {
    result.clear();
  }
  output = std::move(result);
  return done;
}

}  // namespace

bool kivbtcPassphraseEncrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
  return run(encrypt, input, output, passphrase);
}

bool kivbtcPassphraseDecrypt(KIVByteArray& input, KIVByteArray& output, KIVByteArray& passphrase) {
  return run(decrypt, input, output, passphrase);
}
