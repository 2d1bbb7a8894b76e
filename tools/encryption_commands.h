// The commands that encrypt and decrypt files under a passphrase.
#ifndef QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H
#define QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H

#include "outcome.h"
#include "passphrase.h"

#include <string>
#include <vector>

namespace tool {

// Encrypts each file, decrypts what was written to be sure of it, and prints "FILE -> OUTPUT".
ExitStatus encryptFiles(const std::vector<std::string>& files, Passphrase& passphrase);

// Writes the plaintext to the file `output`, wholly or not at all, with mode 0600; to the standard output
// if `output` is empty.
ExitStatus decryptFile(const std::string& file, const std::string& output, Passphrase& passphrase);

// Prints "FILE: OK" for each file that decrypts, and reports the others.
ExitStatus verifyFiles(const std::vector<std::string>& files, Passphrase& passphrase);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H
