// Functions shared by the commands that encrypt and decrypt.
#pragma once

#include "commands/command_line.h"
#include "filestore/secret_byte_array.h"
#include "io/passphrase.h"

#include <functional>
#include <string>

namespace tool {

using jexxml::SecretByteArray;

// On failure, reports the failure and returns false.
bool decrypt(const std::string& file, Passphrase& passphrase, SecretByteArray& plaintext);

// Reports the files that cannot be read, and runs the command for each readable file. If a file is readable, takes the
// passphrase from --passphrase-file, or asks for it on the terminal, twice if `confirm` is set.
ExitStatus withPassphrase(const Options& options, bool confirm,
                          const std::function<ExitStatus(const std::string&, Passphrase&)>& command);

}  // namespace tool
