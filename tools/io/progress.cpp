#include "io/progress.h"

#include "io/terminal_text.h"

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace tool {

Progress::Progress(std::size_t fileCount)
    : count(fileCount),
      terminal(std::cerr.rdbuf()),
      output(*this, std::cout.rdbuf()),
      errors(*this, std::cerr.rdbuf()) {
  if (isatty(STDERR_FILENO) == 1) {
    outputs.emplace(std::cout, &output);
    errorOutputs.emplace(std::cerr, &errors);
  }
}

void Progress::show(std::size_t number, const std::string& file) {
  constexpr std::size_t manyFiles = 50;
  constexpr std::uintmax_t longFile = 50'000'000;
  if (!outputs) {
    return;
  }
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  if (count >= manyFiles || (!error && size > longFile)) {
    std::cout.flush();
    terminal << "\r\033[K" << number << " of " << count << ": " << shown(file) << std::flush;
    isVisible = true;
  }
}

void Progress::clear() {
  if (isVisible) {
    terminal << "\r\033[K" << std::flush;
    isVisible = false;
  }
}

Progress::Clearing::int_type Progress::Clearing::overflow(int_type letter) {
  progress.clear();
  return traits_type::eq_int_type(letter, traits_type::eof()) ? traits_type::not_eof(letter)
                                                              : next->sputc(traits_type::to_char_type(letter));
}

std::streamsize Progress::Clearing::xsputn(const char* text, std::streamsize length) {
  progress.clear();
  return next->sputn(text, length);
}

}  // namespace tool
