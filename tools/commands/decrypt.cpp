// qzjexxml decrypt: decrypts a file.
#include "commands/command_line.h"
#include "commands/decryption.h"
#include "filestore/secret_byte_array.h"
#include "io/file_identity.h"
#include "io/safe_output.h"

#include <sys/types.h>

#include <string>

namespace tool {
namespace {

using jexxml::SecretByteArray;

// Writes the plaintext to the output, atomically to a file, to a new one with mode 0600.
ExitStatus decryptFile(const Options& options) {
  const std::string target = options.output.empty() ? "-" : options.output;
  if (target != "-") {
    requireNotAnInput(target, identitiesOf({options.files.front(), options.passphraseFile}));
    requireReplaceable(target, options.force);
  }
  return withPassphrase(options.files, options.passphraseFile, false,
                        [&](const std::string& file, Passphrase& passphrase) {
                          constexpr mode_t forOwner = 0600;
                          SecretByteArray plaintext;
                          if (decrypt(file, passphrase, plaintext) != allGood) {
                            return fileFailed;
                          }
                          SafeOutput output(target, forOwner, options.force);
                          output.write({plaintext.data, plaintext.length});
                          output.commit();
                          return allGood;
                        });
}

}  // namespace

void addDecrypt(CommandLine& line) {
  line.add("decrypt", "Decrypt a file", "decrypt -o manifest.xml manifest.enc", decryptFile)
      .file("FILE", "The file")
      .force()
      .output()
      .passphraseFile();
}

}  // namespace tool
