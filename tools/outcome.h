// What the commands say to their user besides their results, and the exit status that follows.
#ifndef QZJEXXML_TOOLS_OUTCOME_H
#define QZJEXXML_TOOLS_OUTCOME_H

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

// Why something cannot be done, for the user.
struct Failure : std::runtime_error {
  // `name` is what it cannot be done with; the command's own file if it is empty.
  explicit Failure(const std::string& text, std::string name = "") : runtime_error(text), subject(std::move(name)) {}

  // With the system's reason, after a call that set errno: "cannot be read: Permission denied".
  static Failure ofSystem(const std::string& text, const std::string& name = "");

  std::string subject;
};

// The text, in the locale's code page or UTF-8, as a terminal may get it: control characters, which could move its
// cursor or begin a line, as \u001B.
std::string shown(std::string_view text);

// Writes "qzjexxml: SUBJECT: TEXT" on the standard error stream, then `details` as they stand.
// Returns fileFailed.
ExitStatus report(const std::string& subject, const std::string& text, const std::string& details = "");

// What is written to the standard error stream while `action` runs, instead of writing it there; as shown() gives it,
// except line ends that are written by themselves.
std::string diagnosticsOf(const std::function<void()>& action);

// Runs the command for each file, whatever becomes of the others, then finishOutput; a Failure, and want of memory, is
// reported. Returns the worst outcome. Of long work, a terminal on the standard error stream shows how far it is.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

// Flushes what was printed; what could not be written makes `status` fileFailed, after a report.
ExitStatus finishOutput(ExitStatus status);

// Runs the command with what it prints in `file`, which is written wholly or not at all; on the standard output if
// `file` is empty or "-".
ExitStatus printTo(const std::string& file, const std::function<ExitStatus()>& command);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_OUTCOME_H
