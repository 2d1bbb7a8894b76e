#include "commands/decryption.h"

#include "commands/running.h"
#include "io/input_file.h"
#include "io/messages.h"
#include "io/standard_streams.h"

#include <qzjexxml/qzjexxml.h>

#include <algorithm>

namespace tool {
ExitStatus decrypt(const std::string& file, Passphrase& passphrase, KIVByteArray& plaintext) {
  bool decrypted = false;
  const InputFile input(file);
  const std::string diagnostics =
      diagnosticsOf([&] { decrypted = DecryptXmlFile(input.path(), plaintext, passphrase.text()); });
  if (decrypted) {
    return allGood;
  }
  constexpr const char* refused =  // the crypto library does not tell
      "wrong passphrase, or the file is damaged or not of this crypto library";
  return diagnostics.empty() ? report(file, refused) : report(file, "cannot be decrypted", diagnostics);
}

ExitStatus withPassphrase(const std::vector<std::string>& files, const std::string& passphraseFile, bool confirm,
                          const std::function<ExitStatus(const std::string&, Passphrase&)>& command) {
  std::vector<std::string> readable;
  const ExitStatus status = forEachFile(files, [&](const std::string& file) {
    requireReadable(file);
    readable.push_back(file);
    return allGood;
  });
  if (readable.empty()) {
    return status;
  }
  Passphrase passphrase(passphraseFile, confirm);
  return std::max(status, forEachFile(readable, [&](const std::string& file) { return command(file, passphrase); }));
}

}  // namespace tool
