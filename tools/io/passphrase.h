// The passphrase of the commands that encrypt and decrypt.
#pragma once

#include "io/messages.h"

#include <array>
#include <string>

namespace tool {

// Why there is no passphrase, for the user.
struct NoPassphrase : Failure {
  explicit NoPassphrase(const std::string& text) : Failure(text, "passphrase") {}
};

// A passphrase of 1 to 1,023 bytes; wiped at its end.
class Passphrase {
 public:
  // Takes the first line of `file` ("-" is the standard input) without its line end, CR LF or LF; or asks on the
  // terminal, without echo, if `file` is empty: twice when `confirm` is set. Throws NoPassphrase.
  Passphrase(const std::string& file, bool confirm);
  Passphrase(const Passphrase&) = delete;
  Passphrase& operator=(const Passphrase&) = delete;
  ~Passphrase();

  // NUL-terminated.
  char* text() { return buffer.data(); }

 private:
  Passphrase() = default;
  void readFirstLine(const std::string& file);
  void ask(const char* prompt);

  std::array<char, 1024> buffer = {};
};

}  // namespace tool
