// qzjexxml verify: says whether files decrypt.
#include "commands/command_line.h"
#include "commands/decryption.h"
#include "filestore/secret_byte_array.h"
#include "io/terminal_text.h"

#include <iostream>
#include <string>
#include <vector>

namespace tool {
namespace {

using jexxml::SecretByteArray;

// Prints "FILE: OK" for each file that decrypts, and reports the others.
ExitStatus verifyFiles(const Options& options) {
  return withPassphrase(options.files, options.passphraseFile, false,
                        [&](const std::string& file, Passphrase& passphrase) {
                          SecretByteArray plaintext;
                          const ExitStatus outcome = decrypt(file, passphrase, plaintext);
                          if (outcome == allGood) {
                            std::cout << escapeForTerminal(file) << ": OK\n";
                          }
                          return outcome;
                        });
}

}  // namespace

void addVerify(CommandLine& line) {
  line.add("verify", "Check that files decrypt", "verify manifest.enc", verifyFiles).files().passphraseFile();
}

}  // namespace tool
