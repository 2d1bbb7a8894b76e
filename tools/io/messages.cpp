#include "io/messages.h"

#include "io/descriptor.h"
#include "io/terminal_text.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace tool {

// The progress line bypasses std::cerr, because std::cerr flushes std::cout, and the flush clears the line.
static bool progressIsVisible = false;

Failure Failure::ofSystem(const std::string& text, const std::string& name) {
  return Failure(text + ": " + std::strerror(errno), name);
}

ExitStatus report(const std::string& subject, const std::string& text, const std::string& details) {
  clearProgress();
  std::cerr << "qzjexxml: " << escapeForTerminal(subject) << ": " << escapeForTerminal(text) << '\n'
            << details << std::flush;
  return fileFailed;
}

void showProgress(std::size_t number, std::size_t count, const std::string& file) {
  constexpr std::size_t manyFiles = 50;
  constexpr std::uintmax_t longFile = 50'000'000;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (isatty(STDERR_FILENO) == 1 && (count >= manyFiles || (!error && size > longFile))) {
    writeAll(STDERR_FILENO,
             "\r\033[K" + std::to_string(number) + " of " + std::to_string(count) + ": " + escapeForTerminal(file));
    progressIsVisible = true;
  }
}

void clearProgress() {
  if (std::exchange(progressIsVisible, false)) {
    writeAll(STDERR_FILENO, "\r\033[K");
  }
}

}  // namespace tool
