// Messages to the user on the standard error stream, and the exit status.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

// The status of several files is the greatest of their statuses.
enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

// Why a command fails. An empty subject stands for the file that the command is processing.
struct Failure : std::runtime_error {
  explicit Failure(const std::string& text, std::string name = "") : runtime_error(text), subject(std::move(name)) {}

  // Appends the reason in errno: "cannot be read: Permission denied".
  static Failure ofSystem(const std::string& text, const std::string& name = "");

  std::string subject;
};

// Writes "qzjexxml: SUBJECT: TEXT", then `details` unescaped. Returns fileFailed.
ExitStatus report(const std::string& subject, const std::string& text, const std::string& details = "");

// Writes "NUMBER of COUNT: FILE" to a terminal, if there are many files or the file is large.
void showProgress(std::size_t number, std::size_t count, const std::string& file);

// Clears the progress line. Called before anything else is written to std::cout or std::cerr.
void clearProgress();

}  // namespace tool
