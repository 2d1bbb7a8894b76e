// What the commands that encrypt and decrypt have in common.
#pragma once

#include "io/messages.h"
#include "io/passphrase.h"

#include <qzjexxml/kiv_byte_array.h>

#include <functional>
#include <string>
#include <vector>

namespace tool {

// Decrypts into `plaintext`; a failure is reported.
ExitStatus decrypt(const std::string& file, Passphrase& passphrase, KIVByteArray& plaintext);

// Runs the command for each file that can be read; the others are reported first. The passphrase is the first line of
// `passphraseFile`, or asked for if that is empty, twice when `confirm` is set: when a file was found that can be read.
ExitStatus withPassphrase(const std::vector<std::string>& files, const std::string& passphraseFile, bool confirm,
                          const std::function<ExitStatus(const std::string&, Passphrase&)>& command);

}  // namespace tool
