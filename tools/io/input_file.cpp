#include "io/input_file.h"

#include "io/messages.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <vector>

namespace tool {

constexpr const char* notRead = "cannot be read";
constexpr std::uint64_t tooLarge = std::uint64_t{1} << 31U;  // the library reads less

// Distinguishes two errors for which the library has one message.
static void requireSize(std::uint64_t size) {
  if (size == 0 || size >= tooLarge) {
    throw Failure(size == 0 ? "the file is empty" : "the file has 2 GiB or more");
  }
}

// Returns true for the standard input and FIFOs, which must be copied.
static bool isStream(const std::string& file) {
  struct stat status;
  if (file == "-") {
    return true;
  }
  if (stat(file.c_str(), &status) != 0 || access(file.c_str(), R_OK) != 0) {
    throw Failure::ofSystem(notRead);
  }
  if (S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    throw Failure::ofSystem(notRead);
  }
  if (S_ISREG(status.st_mode)) {
    requireSize(static_cast<std::uint64_t>(status.st_size));
  } else if (!S_ISFIFO(status.st_mode)) {
    throw Failure("the file is a device or socket");
  }
  return S_ISFIFO(status.st_mode);
}

void requireReadable(const std::string& file) { isStream(file); }

InputFile::InputFile(const std::string& name)
    : openable(name), isCopied(isStream(name)), memory(isCopied ? memfd_create("description", MFD_CLOEXEC) : -1) {
  static bool standardInputIsTaken = false;
  if (name == "-" && std::exchange(standardInputIsTaken, true)) {
    throw Failure("the standard input can be read only once");
  }
  if (!isCopied) {
    return;
  }
  const Descriptor input(name == "-" ? STDIN_FILENO : open(name.c_str(), O_RDONLY | O_CLOEXEC));
  std::vector<char> buffer(std::size_t{1} << 16U);
  std::uint64_t size = 0;
  for (ssize_t got = 1; got != 0 && size < tooLarge; size += static_cast<std::uint64_t>(got)) {
    got = read(input.get(), buffer.data(), buffer.size());
    if (got < 0 || !writeAll(memory.get(), {buffer.data(), static_cast<std::size_t>(got)})) {
      throw Failure::ofSystem(notRead);
    }
  }
  requireSize(size);
  openable = "/proc/self/fd/" + std::to_string(memory.get());
}

}  // namespace tool
