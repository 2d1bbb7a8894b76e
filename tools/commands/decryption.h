// What the commands that encrypt and decrypt have in common.
#pragma once

#include "commands/command_line.h"
#include "filestore/secret_byte_array.h"
#include "io/passphrase.h"

#include <functional>
#include <string>

namespace tool {

using jexxml::SecretByteArray;

// Decrypts into `plaintext`. Reports a failure, and returns false then.
bool decrypt(const std::string& file, Passphrase& passphrase, SecretByteArray& plaintext);

// Runs the command for each of the files that can be read; the others are reported first. The passphrase is taken once,
// when a file was found that can be read: from --passphrase-file, or asked for, twice where `confirm` is set.
ExitStatus withPassphrase(const Options& options, bool confirm,
                          const std::function<ExitStatus(const std::string&, Passphrase&)>& command);

}  // namespace tool
