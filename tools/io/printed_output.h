// Where what a command prints goes.
#pragma once

#include "io/failure.h"
#include "io/scoped_streambuf.h"

#include <functional>
#include <streambuf>
#include <string>
#include <vector>

namespace tool {

// Has std::cout write to the descriptor while it lives. `outputName` is for reports.
class PrintedOutput final : private std::streambuf {
 public:
  PrintedOutput(std::string outputName, int written);
  PrintedOutput(const PrintedOutput&) = delete;
  PrintedOutput& operator=(const PrintedOutput&) = delete;
  ~PrintedOutput() override;

 private:
  friend ExitStatus finishOutput(ExitStatus status);

  int_type overflow(int_type letter) override;
  int sync() override;

  static PrintedOutput* current;

  const std::string name;
  const int descriptor;
  int error = 0;  // of the first write that failed
  std::vector<char> buffer;
  const ScopedStreambuf redirection;
  PrintedOutput* const before;
};

// Flushes what was printed; what could not be written makes `status` fileFailed, after a report.
ExitStatus finishOutput(ExitStatus status);

// Runs the command with what it prints in `file`, which is written atomically; on the standard output if
// `file` is empty or "-". Throws Failure when the file is one of the inputs, or a description.
ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command);

}  // namespace tool
