// The commands that encrypt and decrypt files under a passphrase.
#ifndef QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H
#define QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H

#include "outcome.h"

#include <string>
#include <vector>

namespace tool {

// The passphrase is the first line of `passphraseFile`, or asked for if that is empty: when a file was found that can
// be read, and before anything is written.

// Encrypts each file into `output`, or else into the .enc file beside it, decrypts what was written to be sure of it,
// and prints "FILE -> OUTPUT". Nothing is done when two files have one output. A file that exists is replaced with
// `force` only; the file itself never.
ExitStatus encryptFiles(const std::vector<std::string>& files, const std::string& output, bool force,
                        const std::string& passphraseFile);

// Writes the plaintext to the file `output`, wholly or not at all, with mode 0600; to the standard output
// if `output` is empty or "-".
ExitStatus decryptFile(const std::string& file, const std::string& output, const std::string& passphraseFile);

// Prints "FILE: OK" for each file that decrypts, and reports the others.
ExitStatus verifyFiles(const std::vector<std::string>& files, const std::string& passphraseFile);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_ENCRYPTION_COMMANDS_H
