// Messages to the user on the standard error stream, and the exit status.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

// Of several outcomes, the greatest counts.
enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

// Why something cannot be done. An empty subject stands for the file in hand.
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

// Clears that line. Called before anything else is written to either stream.
void clearProgress();

}  // namespace tool
