// Encrypted files of the stand-in's format, made by libsodium alone as the format's description has it.
#ifndef QZJEXXML_FUZZ_SEALED_FILE_H
#define QZJEXXML_FUZZ_SEALED_FILE_H

#include <cstddef>
#include <string>
#include <string_view>

namespace sealed {

inline constexpr std::size_t startSize = 16;  // magic, format, passes, memory
inline constexpr std::size_t headerSize = 56;

// The start of a file with the least costs there are.
std::string cheapStart();

// A file with the start of a header given, whatever it says, and a key derived at the costs given, so that it
// authenticates at those. `saltAndNonce` has 40 bytes.
std::string file(std::string_view plaintext, std::string_view passphrase, const std::string& start,
                 std::string_view saltAndNonce, unsigned passes = 1, std::size_t memoryKib = 8);

}  // namespace sealed

#endif  // QZJEXXML_FUZZ_SEALED_FILE_H
