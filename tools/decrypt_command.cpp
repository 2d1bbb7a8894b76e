// qzjexxml decrypt: decrypts a file.
#include "command_line.h"
#include "commands.h"
#include "decryption.h"
#include "failure.h"
#include "filestore/secret_byte_array.h"
#include "safe_output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <string_view>

namespace tool {
namespace {

using jexxml::SecretByteArray;

// Writes the plaintext to the file `output`, wholly or not at all, with mode 0600; to the standard output
// if `output` is empty or "-".
ExitStatus decryptFile(const std::string& file, const std::string& output, const std::string& passphraseFile) {
  return withPassphrase({file}, passphraseFile, false, [&](const std::string&, Passphrase& passphrase) {
    constexpr mode_t forOwner = 0600;
    SecretByteArray plaintext;
    if (decrypt(file, passphrase, plaintext) != allGood) {
      return fileFailed;
    }
    const std::string_view bytes(plaintext.data, plaintext.length);
    if (output.empty() || output == "-") {
      return writeAll(STDOUT_FILENO, bytes) ? allGood : report("standard output", "cannot be written");
    }
    if (isSameFile(file, output)) {
      throw Failure("is its own output");
    }
    SafeOutput safe(output, forOwner);
    safe.write(bytes);
    safe.commit();
    return allGood;
  });
}

struct Options {
  std::string file;
  std::string output;
  std::string passphraseFile;
};

}  // namespace

void addDecrypt(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("decrypt", "Decrypt a file",
           [options] { return decryptFile(options->file, options->output, options->passphraseFile); })
      .argument("FILE", options->file, "The file")
      .output(options->output)
      .passphraseFile(options->passphraseFile);
}

}  // namespace tool
