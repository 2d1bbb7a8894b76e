// The passphrase of the commands that encrypt and decrypt.
#pragma once

#include <array>
#include <string>

namespace tool {

// A passphrase of 1 to 1,023 bytes; wiped at its end.
class Passphrase {
 public:
  // Takes the first line of `file` ("-" is the standard input) without its line end, CR LF or LF; or asks on the
  // terminal, without echo, if `file` is empty: twice when `confirm` is set. Throws Failure.
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
