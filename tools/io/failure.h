// Failure: why something cannot be done, for the user; how the user is told; and the exit status.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

// The command's exit status. Of several outcomes, the worst is the greatest.
enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

struct Failure : std::runtime_error {
  // `name` is what it cannot be done with; the command's own file if it is empty.
  explicit Failure(const std::string& text, std::string name = "") : runtime_error(text), subject(std::move(name)) {}

  // With the system's reason, after a call that set errno: "cannot be read: Permission denied".
  static Failure ofSystem(const std::string& text, const std::string& name = "");

  std::string subject;
};

// Writes "qzjexxml: SUBJECT: TEXT" on the standard error stream, then `details` as they stand.
// Returns fileFailed.
ExitStatus report(const std::string& subject, const std::string& text, const std::string& details = "");

}  // namespace tool
