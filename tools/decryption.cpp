#include "decryption.h"

#include "each_file.h"
#include "failure.h"
#include "input_file.h"
#include "library_diagnostics.h"

#include <qzjexxml/qzjexxml.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>

namespace tool {
namespace {

// Why a file that can be read does not decrypt.
const char* reasonFor(const KIVByteArray& file) {
  constexpr std::string_view magic = "KIVBTC";
  constexpr std::size_t memoryOffset = 12;             // of the kibibytes that the key takes
  constexpr std::uint32_t mostKibibytes = 256 * 1024;  // that are taken at all
  constexpr std::size_t leastLength = 72;
  if (file.length < leastLength || std::string_view(file.data, magic.size()) != magic) {
    return "is not an encrypted file";
  }
  std::uint32_t kibibytes = 0;
  std::memcpy(&kibibytes, file.data + memoryOffset, sizeof kibibytes);
  const std::size_t size = std::size_t{std::min(kibibytes, mostKibibytes)} << 10U;
  const std::unique_ptr<const char[]> room(new (std::nothrow) char[size]);
  return room == nullptr ? "there is not enough memory" : "wrong passphrase or damaged file";
}

}  // namespace

bool isSameFile(const std::string& file, const std::string& other) {
  std::error_code error;
  return std::filesystem::equivalent(file, other, error);
}

ExitStatus decrypt(const std::string& file, Passphrase& passphrase, KIVByteArray& plaintext) {
  bool decrypted = false;
  const std::string diagnostics =
      diagnosticsOf([&] { decrypted = DecryptXmlFile(file.c_str(), plaintext, passphrase.text()); });
  if (decrypted) {
    return allGood;
  }
  KIVByteArray content;
  return diagnostics.empty() && ReadXmlFile(file.c_str(), content) ? report(file, reasonFor(content))
                                                                   : report(file, "cannot be decrypted", diagnostics);
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
