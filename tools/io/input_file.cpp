#include "io/input_file.h"

#include "io/failure.h"
#include "io/safe_output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tool {
namespace {

constexpr const char* notRead = "cannot be read";

// Of a file that can be read; see requireReadable.
mode_t kindOf(const std::string& file) {
  struct stat status;
  if (stat(file.c_str(), &status) != 0) {
    throw Failure::ofSystem(notRead);
  }
  if (S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    throw Failure::ofSystem(notRead);
  }
  if (access(file.c_str(), R_OK) != 0) {
    throw Failure::ofSystem(notRead);
  }
  return status.st_mode & S_IFMT;
}

}  // namespace

void requireReadable(const std::string& file) { kindOf(file); }

InputFile::InputFile(const std::string& name) : openable(name) {
  if (name == "-") {
    copy(STDIN_FILENO);
    return;
  }
  if (kindOf(name) == S_IFIFO) {
    const int input = open(name.c_str(), O_RDONLY | O_CLOEXEC);
    copy(input);
    close(input);
  }
}

InputFile::~InputFile() {
  if (memory >= 0) {
    close(memory);
  }
}

void InputFile::copy(int input) {
  constexpr std::uint64_t most = std::uint64_t{1} << 31U;  // which the library refuses, as it does a file of that size
  memory = memfd_create("description", MFD_CLOEXEC);
  std::vector<char> buffer(std::size_t{1} << 16U);
  ssize_t got = 1;
  for (std::uint64_t size = 0; memory >= 0 && got != 0 && size < most; size += static_cast<std::uint64_t>(got)) {
    got = read(input, buffer.data(), buffer.size());
    if (got < 0 || !writeAll(memory, {buffer.data(), static_cast<std::size_t>(got)})) {
      throw Failure::ofSystem(notRead);
    }
  }
  if (memory < 0) {
    throw Failure::ofSystem(notRead);
  }
  openable = "/proc/self/fd/" + std::to_string(memory);
}

}  // namespace tool
