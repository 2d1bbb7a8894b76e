// Decrypts two files for each input. The first is the input itself; only the seeds can be decrypted. The second is
// encrypted with a salt, nonce and plaintext from the input. It must decrypt to the plaintext, and must not decrypt
// after one bit has changed.
#include "in_memory_file.h"
#include "sealed_file.h"

#include <qzjexxml/qzjexxml.h>

#include <string>
#include <string_view>

namespace {

char passphrase[] = "secret";

void expect(bool condition) {
  if (!condition) {
    std::abort();
  }
}

// Returns whether `file` can be decrypted; if so, the result has to be `plaintext`.
bool decryptsTo(std::string_view plaintext, const unsigned char* file, std::size_t size) {
  const InMemoryFile stored(file, size);
  KIVByteArray array;
  const bool decrypted = DecryptXmlFile(stored.path().c_str(), array, passphrase);
  expect(std::string_view(array.data, array.length) == (decrypted ? plaintext : ""));
  return decrypted;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // Skips headers with more than one pass (offset 8, little-endian) over 64 MiB or more (offset 12, in KiB): they would
  // only slow the search down.
  if (size >= 16 && bytes[8] > 1 && bytes[9] == 0 && bytes[14] != 0) {
    return -1;
  }
  decryptsTo("<r/>", bytes, size);
  constexpr std::size_t saltAndNonce = 40;
  if (size > saltAndNonce) {
    const std::string_view plaintext(reinterpret_cast<const char*>(bytes) + saltAndNonce, size - saltAndNonce);
    const std::string_view random(reinterpret_cast<const char*>(bytes), saltAndNonce);
    std::string file = sealed::file(plaintext, passphrase, sealed::cheapStart(), random);
    const auto* stored = reinterpret_cast<const unsigned char*>(file.data());
    expect(decryptsTo(plaintext, stored, file.size()));
    // Outside the costs in the header, because higher costs would have to be paid.
    const std::size_t place = 16 + (bytes[0] * 256U + bytes[1]) % (file.size() - 16);
    file[place] = static_cast<char>(file[place] ^ (1 << bytes[2] % 8));
    expect(!decryptsTo(plaintext, stored, file.size()));
  }
  return 0;
}
