// The standard streams: where the output goes, and what the library writes to the standard error stream.
#pragma once

#include "io/messages.h"

#include <functional>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace tool {

// Replaces the buffer of a stream while it lives.
class ScopedStreambuf {
 public:
  ScopedStreambuf(std::ostream& lent, std::streambuf* buffer) : stream(lent), standard(lent.rdbuf(buffer)) {}
  ScopedStreambuf(const ScopedStreambuf&) = delete;
  ScopedStreambuf& operator=(const ScopedStreambuf&) = delete;
  ~ScopedStreambuf() {
    const std::ios::iostate state = stream.rdstate();  // which a change of the buffer clears
    stream.rdbuf(standard);
    stream.setstate(state);
  }

 private:
  std::ostream& stream;
  std::streambuf* standard;
};

// Has std::cout write to the descriptor while it lives. `outputName` is for reports.
class PrintedOutput final : public std::streambuf {
 public:
  PrintedOutput(std::string outputName, int written);

 private:
  friend ExitStatus finishOutput(ExitStatus status);

  int_type overflow(int_type letter) override;
  int sync() override;

  const std::string name;
  const int descriptor;
  int error = 0;  // of the first write that failed
  std::vector<char> buffer;
  const ScopedStreambuf redirection;
};

// Flushes what was printed. Reports what could not be written, and returns fileFailed then, or else `status`. REQUIRES:
// std::cout writes to a PrintedOutput.
ExitStatus finishOutput(ExitStatus status);

// Runs the command with std::cout written to `file`, atomically; to the standard output if `file` is empty or "-".
// Throws Failure when the file is one of the inputs, or a description.
ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command);

// Returns what `action` writes to the standard error stream, which does not get there. Control characters are escaped,
// except line ends that are written by themselves.
std::string diagnosticsOf(const std::function<void()>& action);

}  // namespace tool
