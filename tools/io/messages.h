// What the user is told: Failure, reports and progress on the standard error stream, and the exit status.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

// The command's exit status. Of several outcomes, the worst is the greatest.
enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

// Why something cannot be done.
struct Failure : std::runtime_error {
  // `name` is what it cannot be done with; the command's own file if it is empty.
  explicit Failure(const std::string& text, std::string name = "") : runtime_error(text), subject(std::move(name)) {}

  // With the system's reason, after a call that set errno: "cannot be read: Permission denied".
  static Failure ofSystem(const std::string& text, const std::string& name = "");

  std::string subject;
};

// Writes "qzjexxml: SUBJECT: TEXT" on the standard error stream, then `details` as they stand. Returns fileFailed.
ExitStatus report(const std::string& subject, const std::string& text, const std::string& details = "");

// Writes "NUMBER of COUNT: FILE" on a terminal on the standard error stream, where there are many files, or the file is
// large.
void showProgress(std::size_t number, std::size_t count, const std::string& file);

// Clears that line. Comes before all else that is written, on either stream.
void clearProgress();

}  // namespace tool
