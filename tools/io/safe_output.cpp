#include "io/safe_output.h"

#include "io/descriptor.h"
#include "io/file_identity.h"
#include "io/messages.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace tool {

constexpr const char* notWritten = "cannot be written";

constexpr std::array endings = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// The name of the temporary file, for the signal handler; empty if there is none.
static std::array<char, PATH_MAX> pending;

static void removePending(int signal) {
  unlink(pending.data());
  std::signal(signal, SIG_DFL);
  raise(signal);
}

// Signals that are ignored when the program starts stay ignored.
static void removeAtSignals() {
  for (const int ending : endings) {
    if (std::signal(ending, removePending) == SIG_IGN) {
      std::signal(ending, SIG_IGN);
    }
  }
}

// Blocks all signals while `action` changes a file and `pending`. Returns its result.
static auto withSignalsBlocked(const auto& action) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  sigprocmask(SIG_BLOCK, &all, &before);
  const auto result = action();
  sigprocmask(SIG_SETMASK, &before, nullptr);
  return result;
}

// A link that resolveSymlinks() kept refers to an open file.
static bool isWrittenThrough(const std::string& target) {
  struct stat status;
  return lstat(target.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

// Returns the mode of the replaced file, without the rights of the group if `file` cannot have that group.
static mode_t modeBeside(const struct stat& replaced, int file) {
  const bool hasGroup = fchown(file, static_cast<uid_t>(-1), replaced.st_gid) == 0;
  return replaced.st_mode & (hasGroup ? 0777 : 0707);
}

static mode_t modeForNew(mode_t mode) {
  const mode_t mask = umask(0);
  umask(mask);
  return mode & ~mask;
}

// Some file systems lack renameat2, others lack hard links.
static bool moveToNewName(const char* from, const char* to) {
  return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0 ||
         (errno != EEXIST && link(from, to) == 0 && unlink(from) == 0);
}

void requireReplaceable(const std::string& file, bool force) {
  struct stat status;
  if (!force && lstat(resolveSymlinks(file).c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
    throw Failure("exists; --force replaces it", file);
  }
}

SafeOutput::SafeOutput(const std::string& file, bool replace, mode_t mode)
    : name(file == "-" ? "standard output" : file),
      target(resolveSymlinks(file)),
      mayReplace(replace),
      modeOfNew(mode) {
  if (file == "-") {
    output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
  } else if (isWrittenThrough(target)) {
    output = open(target.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, mode);
  } else {
    temporary = target + ".XXXXXX";
    removeAtSignals();
    output = withSignalsBlocked([&] {
      const int created = mkostemp(temporary.data(), O_CLOEXEC);
      temporary.copy(pending.data(), created < 0 ? 0 : temporary.size());
      return created;
    });
  }
  if (output < 0) {
    throw Failure::ofSystem(notWritten, name);
  }
}

SafeOutput::~SafeOutput() {
  close(output);
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
  struct stat replaced;
  fchmod(output, stat(target.c_str(), &replaced) == 0 ? modeBeside(replaced, output) : modeForNew(modeOfNew));
  const auto move = [&] {
    const bool moved = mayReplace ? std::rename(temporary.c_str(), target.c_str()) == 0
                                  : moveToNewName(temporary.c_str(), target.c_str());
    if (moved) {
      pending.fill('\0');
    }
    return moved;
  };
  if (fsync(output) != 0 || !withSignalsBlocked(move)) {
    throw Failure::ofSystem(notWritten, name);
  }
}

}  // namespace tool
