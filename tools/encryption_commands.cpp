#include "encryption_commands.h"

#include "filestore/encrypted_file.h"
#include "filestore/secret_byte_array.h"

#include <qzjexxml/qzjexxml.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

namespace tool {
namespace {

using jexxml::SecretByteArray;

// Decrypts into `plaintext`; a failure is reported.
ExitStatus decrypt(const std::string& file, Passphrase& passphrase, KIVByteArray& plaintext) {
  bool decrypted = false;
  const std::string diagnostics =
      diagnosticsOf([&] { decrypted = DecryptXmlFile(file.c_str(), plaintext, passphrase.text()); });
  if (decrypted) {
    return allGood;
  }
  return diagnostics.empty() ? report(file, "wrong passphrase or damaged file")
                             : report(file, "cannot be decrypted", diagnostics);
}

ExitStatus encrypt(const std::string& file, Passphrase& passphrase) {
  bool encrypted = false;
  const std::string diagnostics = diagnosticsOf([&] { encrypted = EncryptFile(file.c_str(), passphrase.text()); });
  if (!encrypted) {
    return report(file, "cannot be encrypted", diagnostics);
  }
  const std::string output = jexxml::encryptedFileName(file);
  SecretByteArray original;
  SecretByteArray plaintext;
  const bool same =
      ReadXmlFile(file.c_str(), original) && decrypt(output, passphrase, plaintext) == allGood &&
      std::equal(original.data, original.data + original.length, plaintext.data, plaintext.data + plaintext.length);
  if (!same) {
    return report(output, "is not what was to be written; the disk may be full");
  }
  std::cout << file << " -> " << output << '\n';
  return allGood;
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

// By way of a file beside it, which mkstemp makes with mode 0600.
ExitStatus replaceFile(const std::string& file, std::string_view bytes) {
  std::string temporary = file + ".XXXXXX";
  const int descriptor = mkstemp(temporary.data());
  bool done = descriptor >= 0 && writeAll(descriptor, bytes) && fsync(descriptor) == 0;
  int error = errno;
  if (descriptor >= 0) {
    const bool closed = close(descriptor) == 0;
    if (done && !(closed && std::rename(temporary.c_str(), file.c_str()) == 0)) {
      error = errno;
      done = false;
    }
    if (!done) {
      unlink(temporary.c_str());
    }
  }
  return done ? allGood : report(file, std::string("cannot be written: ") + std::strerror(error));
}

}  // namespace

ExitStatus encryptFiles(const std::vector<std::string>& files, Passphrase& passphrase) {
  return forEachFile(files, [&](const std::string& file) { return encrypt(file, passphrase); });
}

ExitStatus decryptFile(const std::string& file, const std::string& output, Passphrase& passphrase) {
  SecretByteArray plaintext;
  if (decrypt(file, passphrase, plaintext) != allGood) {
    return fileFailed;
  }
  const std::string_view bytes(plaintext.data, plaintext.length);
  if (!output.empty()) {
    return replaceFile(output, bytes);
  }
  return writeAll(STDOUT_FILENO, bytes) ? allGood : report("standard output", "cannot be written");
}

ExitStatus verifyFiles(const std::vector<std::string>& files, Passphrase& passphrase) {
  return forEachFile(files, [&](const std::string& file) {
    SecretByteArray plaintext;
    const ExitStatus outcome = decrypt(file, passphrase, plaintext);
    if (outcome == allGood) {
      std::cout << file << ": OK\n";
    }
    return outcome;
  });
}

}  // namespace tool
