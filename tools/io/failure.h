// Failure: why something cannot be done, for the user; and how the user is told.
#ifndef QZJEXXML_TOOLS_IO_FAILURE_H
#define QZJEXXML_TOOLS_IO_FAILURE_H

#include "io/exit_status.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace tool {

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

#endif  // QZJEXXML_TOOLS_IO_FAILURE_H
