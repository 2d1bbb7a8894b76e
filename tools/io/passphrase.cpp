#include "io/passphrase.h"

#include "io/descriptor.h"
#include "io/messages.h"

#include <bsd/readpassphrase.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstring>

namespace tool {

constexpr const char* subject = "passphrase";

// Delegates, so that the destructor wipes the buffer even if this constructor throws.
Passphrase::Passphrase(const std::string& file, bool confirm) : Passphrase() {
  if (!file.empty()) {
    readFirstLine(file);
  } else {
    ask("Passphrase: ");
    if (confirm) {
      Passphrase again;
      again.ask("Passphrase again: ");
      if (buffer != again.buffer) {
        throw Failure("the passphrases differ", subject);
      }
    }
  }
  if (buffer.front() == '\0') {
    throw Failure("the passphrase is empty", subject);
  }
}

Passphrase::~Passphrase() { explicit_bzero(buffer.data(), buffer.size()); }

// Reads byte by byte: the rest of the standard input stays unread, and no buffer keeps a copy of the passphrase.
void Passphrase::readFirstLine(const std::string& file) {
  const Descriptor input(file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC));
  std::size_t length = 0;
  char byte = '\0';
  ssize_t got = input.get();
  while (got >= 0 && (got = read(input.get(), &byte, 1)) == 1 && byte != '\n') {
    if (byte == '\0' || length + 1 == buffer.size()) {
      throw Failure(byte == '\0' ? "the passphrase contains a NUL byte" : "the passphrase is longer than 1,023 bytes",
                    subject);
    }
    buffer[length++] = byte;
  }
  if (got < 0) {
    throw Failure::ofSystem("cannot read " + file, subject);
  }
  if (byte == '\n' && length > 0 && buffer[length - 1] == '\r') {
    buffer[length - 1] = '\0';
  }
  explicit_bzero(&byte, 1);
}

void Passphrase::ask(const char* prompt) {
  if (readpassphrase(prompt, buffer.data(), buffer.size(), RPP_REQUIRE_TTY) == nullptr) {
    throw Failure("there is no terminal to ask on; use --passphrase-file", subject);
  }
}

}  // namespace tool
