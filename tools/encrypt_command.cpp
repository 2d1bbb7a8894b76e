// qzjexxml encrypt: encrypts files under a passphrase.
#include "command_line.h"
#include "commands.h"
#include "decryption.h"
#include "each_file.h"
#include "failure.h"
#include "filestore/encrypted_file.h"
#include "filestore/secret_byte_array.h"
#include "library_diagnostics.h"
#include "safe_output.h"
#include "terminal_text.h"

#include <kivbtcrypto.h>
#include <qzjexxml/qzjexxml.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tool {
namespace {

using jexxml::SecretByteArray;

struct Options {
  std::vector<std::string> files;
  std::string output;
  bool force = false;
  std::string passphraseFile;
};

ExitStatus encrypt(const std::string& file, const std::string& target, bool force, Passphrase& passphrase) {
  constexpr mode_t forAll = 0666;
  SecretByteArray plaintext;
  SecretByteArray passphraseBytes(passphrase.text());
  KIVByteArray ciphertext;
  bool encrypted = false;
  const std::string diagnostics = diagnosticsOf([&] {
    encrypted = ReadXmlFile(file.c_str(), plaintext) && kivbtcPassphraseEncrypt(plaintext, ciphertext, passphraseBytes);
  });
  if (!encrypted) {
    return report(file, "cannot be encrypted", diagnostics);
  }
  SafeOutput output(target, forAll, force);
  output.write({ciphertext.data, ciphertext.length});
  SecretByteArray again;
  if (!output.temporaryName().empty() &&
      (decrypt(output.temporaryName(), passphrase, again) != allGood ||
       !std::equal(plaintext.data, plaintext.data + plaintext.length, again.data, again.data + again.length))) {
    return report(target, "is not what was to be written");
  }
  output.commit();
  std::cout << shown(file) << " -> " << shown(target) << '\n';
  return allGood;
}

// Encrypts each file into `output`, or else into the .enc file beside it, decrypts what was written to be sure of it,
// and prints "FILE -> OUTPUT". Nothing is done when two files have one output. A file that exists is replaced with
// `force` only; the file itself never.
ExitStatus encryptFiles(const Options& options) {
  const auto& [files, output, force, passphraseFile] = options;
  const auto outputOf = [&](const std::string& file) {
    return output.empty() ? jexxml::encryptedFileName(file) : output;
  };
  std::set<std::filesystem::path> outputs;
  const ExitStatus status = forEachFile(files, [&](const std::string& file) {
    const std::string target = outputOf(file);
    std::error_code error;
    if (!outputs.insert(std::filesystem::weakly_canonical(target, error)).second) {
      throw Failure("another file has the same output, " + target);
    }
    if (isSameFile(file, target)) {
      throw Failure("is its own output, " + target);
    }
    if (!force && std::filesystem::is_regular_file(target, error)) {
      throw Failure("exists; --force replaces it", target);
    }
    return allGood;
  });
  if (status != allGood) {
    return status;
  }
  return withPassphrase(files, passphraseFile, true, [&](const std::string& file, Passphrase& passphrase) {
    return encrypt(file, outputOf(file), force, passphrase);
  });
}

}  // namespace

void addEncrypt(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("encrypt", "Encrypt files, each into the .enc file beside it", [options] { return encryptFiles(*options); })
      .files(options->files)
      .flag("--force", options->force, "Replace what exists")
      .output(options->output)
      .passphraseFile(options->passphraseFile);
}

}  // namespace tool
