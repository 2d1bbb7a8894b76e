// qzjexxml decrypt: decrypts a file.
#include "commands/decryption.h"
#include "io/file_identity.h"
#include "io/safe_output.h"

namespace tool {

// Writes the plaintext to the output. A new file has mode 0600.
static ExitStatus decryptFile(const Options& options) {
  const std::string target = options.output.empty() ? "-" : options.output;
  if (target != "-") {
    requireNotAnInput(target, identitiesOf({options.files.front(), options.passphraseFile}));
    requireReplaceable(target, options.force);
  }
  return withPassphrase(options, false, [&](const std::string& file, Passphrase& passphrase) {
    SecretByteArray plaintext;
    if (!decrypt(file, passphrase, plaintext)) {
      return fileFailed;
    }
    SafeOutput output(target, options.force, 0600);
    output.write({plaintext.data, plaintext.length});
    output.commit();
    return allGood;
  });
}

void addDecrypt(CommandLine& line) {
  line.add("decrypt", "Decrypt a file", "decrypt -o manifest.xml manifest.enc", decryptFile)
      .file("FILE", "The encrypted file")
      .force()
      .output()
      .passphraseFile();
}

}  // namespace tool
