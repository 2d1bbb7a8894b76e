#include "safe_output.h"

#include "failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace tool {
namespace {

constexpr const char* notWritten = "cannot be written";

constexpr std::array endings = {SIGHUP, SIGINT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// The temporary file, for the handler of these signals; empty when there is none.
std::array<char, PATH_MAX> pending;

void removePending(int signal) {
  unlink(pending.data());
  std::signal(signal, SIG_DFL);
  raise(signal);
}

// Signals that the program was started to ignore stay ignored.
void removeAtSignals() {
  for (const int ending : endings) {
    if (std::signal(ending, removePending) == SIG_IGN) {
      std::signal(ending, SIG_IGN);
    }
  }
}

// While it lives, the signals wait: until `pending` is right.
class SignalsWait {
 public:
  SignalsWait() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_BLOCK, &all, &before);
  }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;
  ~SignalsWait() { sigprocmask(SIG_SETMASK, &before, nullptr); }

 private:
  sigset_t before;
};

bool isWrittenThrough(const std::string& file) {
  struct stat status;
  return file.starts_with("/dev/") || (lstat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode));
}

}  // namespace

SafeOutput::SafeOutput(const std::string& file, mode_t mode, bool replace)
    : name(file), target(file), mayReplace(replace) {
  std::error_code error;
  const std::string behindLinks = std::filesystem::canonical(file, error);
  if (!error && !file.starts_with("/dev/")) {
    target = behindLinks;
  }
  if (isWrittenThrough(target)) {
    output = open(target.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, mode);
  } else {
    temporary = target + ".XXXXXX";
    if (temporary.size() >= pending.size()) {
      errno = ENAMETOOLONG;
      throw Failure::ofSystem(notWritten, name);
    }
    removeAtSignals();
    const SignalsWait wait;
    output = mkostemp(temporary.data(), O_CLOEXEC);
    if (output >= 0) {
      temporary.copy(pending.data(), temporary.size());
      const mode_t mask = umask(0);
      umask(mask);
      fchmod(output, mode & ~mask);
    }
  }
  if (output < 0) {
    throw Failure::ofSystem(notWritten, name);
  }
}

SafeOutput::~SafeOutput() {
  close(output);
  const SignalsWait wait;
  if (pending.front() != '\0') {
    unlink(pending.data());
    pending.fill('\0');
  }
}

void SafeOutput::write(std::string_view bytes) const {
  if (!writeAll(output, bytes)) {
    throw Failure::ofSystem(notWritten, name);
  }
}

void SafeOutput::commit() {
  if (temporary.empty()) {
    return;
  }
  if (fsync(output) != 0) {
    throw Failure::ofSystem(notWritten, name);
  }
  const SignalsWait wait;
  if (mayReplace ? std::rename(temporary.c_str(), target.c_str()) != 0
                 : link(temporary.c_str(), target.c_str()) != 0 || unlink(temporary.c_str()) != 0) {
    throw Failure::ofSystem(notWritten, name);
  }
  pending.fill('\0');
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

}  // namespace tool
