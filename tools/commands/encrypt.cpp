// qzjexxml encrypt: encrypts files with a passphrase.
#include "commands/decryption.h"
#include "commands/running.h"
#include "filestore/encrypted_file.h"
#include "io/file_identity.h"
#include "io/input_file.h"
#include "io/safe_output.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"

#include <kivbtcrypto.h>
#include <qzjexxml/qzjexxml.h>

#include <unistd.h>

#include <algorithm>
#include <iostream>

namespace tool {

static ExitStatus encrypt(const std::string& file, const std::string& target, bool force, Passphrase& passphrase) {
  SecretByteArray plaintext;
  SecretByteArray passphraseBytes(passphrase.text());
  KIVByteArray ciphertext;
  bool encrypted = false;
  const InputFile input(file);
  const std::string diagnostics = diagnosticsOf([&] {
    encrypted = ReadXmlFile(input.path(), plaintext) && kivbtcPassphraseEncrypt(plaintext, ciphertext, passphraseBytes);
  });
  if (!encrypted) {
    return report(file, "cannot be encrypted", diagnostics);
  }
  SafeOutput output(target, force);
  output.write({ciphertext.data, ciphertext.length});
  ciphertext.clear();
  SecretByteArray again;
  const bool isWrittenThrough = output.temporaryName().empty();  // for example to the standard output
  if (!isWrittenThrough &&
      (!decrypt(output.temporaryName(), passphrase, again) ||
       !std::equal(plaintext.data, plaintext.data + plaintext.length, again.data, again.data + again.length))) {
    return report(target, "verification failed: the output does not decrypt to the input");
  }
  output.commit();
  (isWrittenThrough ? std::cerr : std::cout) << escapeForTerminal(file) << " -> " << escapeForTerminal(target) << '\n';
  return allGood;
}

static std::string outputFor(const std::string& file, const Options& options) {
  return !options.output.empty() ? options.output : file == "-" ? file : jexxml::encryptedFileName(file);
}

// Reports outputs that are the same file, that are inputs, or that exist.
static ExitStatus checkOutputs(const Options& options) {
  std::vector<std::string> read = options.files;
  read.push_back(options.passphraseFile);
  const std::set<FileIdentity> inputs = identitiesOf(read);
  std::set<FileIdentity> outputs;
  return forEachFile(options.files, [&](const std::string& file) {
    const std::string target = outputFor(file, options);
    const auto identity = identityOf(target);
    const bool isSecond = !options.output.empty() && &file != &options.files.front();
    if (identity ? !outputs.insert(*identity).second : isSecond) {
      throw Failure("another file has the same output, " + target);
    }
    if (target != "-") {
      requireNotAnInput(target, inputs);
      requireReplaceable(target, options.force);
    } else if (isatty(STDOUT_FILENO) == 1) {
      throw Failure("is a terminal; redirect it, or name a file", "standard output");
    }
    return allGood;
  });
}

// Encrypts each file into the output or the .enc file beside it, and the standard input to the output or the standard
// output. Decrypts the result to verify it. Prints "FILE -> OUTPUT". Does nothing if checkOutputs() fails.
static ExitStatus encryptFiles(const Options& options) {
  if (checkOutputs(options) != allGood) {
    return fileFailed;
  }
  return withPassphrase(options, true, [&](const std::string& file, Passphrase& passphrase) {
    return encrypt(file, outputFor(file, options), options.force, passphrase);
  });
}

void addEncrypt(CommandLine& line) {
  line.add("encrypt", "Encrypt each file into the .enc file beside it", "encrypt manifest.xml", encryptFiles)
      .files()
      .force()
      .output()
      .passphraseFile();
}

}  // namespace tool
