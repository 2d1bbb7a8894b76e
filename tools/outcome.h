// What the commands say to their user besides their results, and the exit status that follows.
#ifndef QZJEXXML_TOOLS_OUTCOME_H
#define QZJEXXML_TOOLS_OUTCOME_H

#include <functional>
#include <string>
#include <vector>

namespace tool {

enum ExitStatus { allGood = 0, fileFailed = 1, wrongUsage = 2 };

// Writes "qzjexxml: SUBJECT: TEXT" on the standard error stream, then `details` as they stand.
// Returns fileFailed.
ExitStatus report(const std::string& subject, const std::string& text, const std::string& details = "");

// What is written to the standard error stream while `action` runs, instead of writing it there.
std::string diagnosticsOf(const std::function<void()>& action);

// Runs the command for each file, whatever becomes of the others, then finishOutput. Returns the worst outcome.
ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command);

// Flushes the standard output; what could not be written makes `status` fileFailed, after a report.
ExitStatus finishOutput(ExitStatus status);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_OUTCOME_H
