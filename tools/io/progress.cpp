#include "io/progress.h"

#include "io/descriptor.h"
#include "io/terminal_text.h"

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tool {
namespace {

// Written without a stream: std::cerr flushes the output first, which clears the line.
bool isVisible = false;

}  // namespace

void showProgress(std::size_t number, std::size_t count, const std::string& file) {
  constexpr std::size_t manyFiles = 50;
  constexpr std::uintmax_t longFile = 50'000'000;
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (isatty(STDERR_FILENO) == 1 && (count >= manyFiles || (!error && size > longFile))) {
    writeAll(STDERR_FILENO,
             "\r\033[K" + std::to_string(number) + " of " + std::to_string(count) + ": " + escapeForTerminal(file));
    isVisible = true;
  }
}

void clearProgress() {
  if (std::exchange(isVisible, false)) {
    writeAll(STDERR_FILENO, "\r\033[K");
  }
}

}  // namespace tool
