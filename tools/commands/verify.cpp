// qzjexxml verify: says whether files decrypt.
#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/decryption.h"
#include "filestore/secret_byte_array.h"
#include "io/terminal_text.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace tool {
namespace {

using jexxml::SecretByteArray;

// Prints "FILE: OK" for each file that decrypts, and reports the others.
ExitStatus verifyFiles(const std::vector<std::string>& files, const std::string& passphraseFile) {
  return withPassphrase(files, passphraseFile, false, [&](const std::string& file, Passphrase& passphrase) {
    SecretByteArray plaintext;
    const ExitStatus outcome = decrypt(file, passphrase, plaintext);
    if (outcome == allGood) {
      std::cout << escapeForTerminal(file) << ": OK\n";
    }
    return outcome;
  });
}

struct Options {
  std::vector<std::string> files;
  std::string passphraseFile;
};

}  // namespace

void addVerify(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("verify", "Check that files decrypt", "verify manifest.enc",
           [options] { return verifyFiles(options->files, options->passphraseFile); })
      .files(options->files)
      .passphraseFile(options->passphraseFile);
}

}  // namespace tool
