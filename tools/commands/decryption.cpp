#include "commands/decryption.h"

#include "commands/running.h"
#include "io/input_file.h"
#include "io/standard_streams.h"

#include <qzjexxml/qzjexxml.h>

#include <algorithm>
#include <vector>

namespace tool {

bool decrypt(const std::string& file, Passphrase& passphrase, SecretByteArray& plaintext) {
  bool decrypted = false;
  const InputFile input(file);
  const std::string diagnostics =
      diagnosticsOf([&] { decrypted = DecryptXmlFile(input.path(), plaintext, passphrase.text()); });
  if (!decrypted) {
    constexpr const char* refused =  // the crypto library does not report which
        "wrong passphrase, or the file is damaged or has another format";
    report(file, diagnostics.empty() ? refused : "cannot be decrypted", diagnostics);
  }
  return decrypted;
}

ExitStatus withPassphrase(const Options& options, bool confirm,
                          const std::function<ExitStatus(const std::string&, Passphrase&)>& command) {
  std::vector<std::string> readable;
  const ExitStatus status = forEachFile(options.files, [&](const std::string& file) {
    requireReadable(file);
    readable.push_back(file);
    return allGood;
  });
  if (readable.empty()) {
    return status;
  }
  Passphrase passphrase(options.passphraseFile, confirm);
  return std::max(status, forEachFile(readable, [&](const std::string& file) { return command(file, passphrase); }));
}

}  // namespace tool
