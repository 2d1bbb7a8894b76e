// qzjexxml decrypt: decrypts a file.
#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/decryption.h"
#include "filestore/secret_byte_array.h"
#include "io/file_identity.h"
#include "io/safe_output.h"

#include <sys/types.h>

#include <memory>
#include <string>

namespace tool {
namespace {

using jexxml::SecretByteArray;

struct Options {
  std::string file;
  std::string output = "-";
  bool force = false;
  std::string passphraseFile;
};

// Writes the plaintext to the output, atomically to a file, to a new one with mode 0600.
ExitStatus decryptFile(const Options& options) {
  if (options.output != "-") {
    requireNotAnInput(options.output, identitiesOf({options.file, options.passphraseFile}));
    requireReplaceable(options.output, options.force);
  }
  return withPassphrase({options.file}, options.passphraseFile, false,
                        [&](const std::string& file, Passphrase& passphrase) {
                          constexpr mode_t forOwner = 0600;
                          SecretByteArray plaintext;
                          if (decrypt(file, passphrase, plaintext) != allGood) {
                            return fileFailed;
                          }
                          SafeOutput output(options.output, forOwner, options.force);
                          output.write({plaintext.data, plaintext.length});
                          output.commit();
                          return allGood;
                        });
}

}  // namespace

void addDecrypt(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("decrypt", "Decrypt a file", "decrypt -o manifest.xml manifest.enc",
           [options] { return decryptFile(*options); })
      .argument("FILE", options->file, "The file")
      .flag("--force", options->force, "Replace what exists")
      .output(options->output)
      .passphraseFile(options->passphraseFile);
}

}  // namespace tool
