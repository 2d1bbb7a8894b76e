// qzjexxml verify: checks that files decrypt.
#include "commands/decryption.h"
#include "io/terminal_text.h"

#include <iostream>

namespace tool {

static ExitStatus verify(const Options& options) {
  return withPassphrase(options, false, [](const std::string& file, Passphrase& passphrase) {
    SecretByteArray plaintext;
    if (!decrypt(file, passphrase, plaintext)) {
      return fileFailed;
    }
    std::cout << escapeForTerminal(file) << ": OK\n";
    return allGood;
  });
}

void addVerify(CommandLine& line) {
  line.add("verify", "Check that files decrypt", "verify manifest.enc", verify).files().passphraseFile();
}

}  // namespace tool
