#include "encryption_commands.h"

#include "filestore/encrypted_file.h"
#include "filestore/secret_byte_array.h"
#include "input_file.h"
#include "passphrase.h"
#include "safe_output.h"

#include <kivbtcrypto.h>
#include <qzjexxml/qzjexxml.h>

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <set>
#include <string_view>

namespace tool {
namespace {

using jexxml::SecretByteArray;

bool isSameFile(const std::string& file, const std::string& other) {
  std::error_code error;
  return std::filesystem::equivalent(file, other, error);
}

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

// Decrypts into `plaintext`; a failure is reported.
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

// Runs the command for each file that can be read; the others are reported first.
template <typename Command>
ExitStatus withPassphrase(const std::vector<std::string>& files, const std::string& passphraseFile, bool confirm,
                          Command command) {
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

}  // namespace

ExitStatus encryptFiles(const std::vector<std::string>& files, const std::string& output, bool force,
                        const std::string& passphraseFile) {
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

ExitStatus verifyFiles(const std::vector<std::string>& files, const std::string& passphraseFile) {
  return withPassphrase(files, passphraseFile, false, [&](const std::string& file, Passphrase& passphrase) {
    SecretByteArray plaintext;
    const ExitStatus outcome = decrypt(file, passphrase, plaintext);
    if (outcome == allGood) {
      std::cout << shown(file) << ": OK\n";
    }
    return outcome;
  });
}

}  // namespace tool
