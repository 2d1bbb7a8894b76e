// Passphrase: the passphrase of the commands that encrypt and decrypt.
#pragma once

#include <array>
#include <string>

namespace tool {

// 1 to 1,023 bytes, which the destructor wipes.
class Passphrase {
 public:
  // Reads the first line of `file`, without LF or CR LF; "-" is the standard input. If `file` is empty, asks on the
  // terminal without echo, twice if `confirm` is set. Throws Failure.
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
