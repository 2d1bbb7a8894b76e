// Feeds a file to the decryption. Only the seeds decrypt, so every plaintext must be one of theirs.
#include <qzjexxml/qzjexxml.h>

#include <string_view>

#include "in_memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  // More than one pass, little-endian at offset 8, over 64 MiB or more, in KiB at offset 12, would only
  // slow the search down.
  if (size >= 16 && bytes[8] > 1 && bytes[9] == 0 && bytes[14] != 0) {
    return -1;
  }
  const InMemoryFile file(bytes, size);
  char passphrase[] = "secret";
  KIVByteArray plaintext;
  if (DecryptXmlFile(file.path().c_str(), plaintext, passphrase)) {
    if (std::string_view(plaintext.data, plaintext.length) != "<r/>") {
      std::abort();
    }
  } else if (plaintext.length != 0) {
    std::abort();
  }
  return 0;
}
