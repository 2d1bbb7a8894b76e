// Redirection of the standard streams.
#pragma once

#include "io/messages.h"

#include <functional>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace tool {

// Replaces the buffer of a stream while this object lives.
class ScopedStreambuf {
 public:
  ScopedStreambuf(std::ostream& lent, std::streambuf* buffer) : stream(lent), standard(lent.rdbuf(buffer)) {}
  ScopedStreambuf(const ScopedStreambuf&) = delete;
  ~ScopedStreambuf() {
    const std::ios::iostate state = stream.rdstate();  // rdbuf() clears it
    stream.rdbuf(standard);
    stream.setstate(state);
  }

 private:
  std::ostream& stream;
  std::streambuf* standard;
};

// Makes std::cout write to the descriptor while this object lives. `outputName` is for messages.
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

// Flushes std::cout, a PrintedOutput. Returns `status`, or reports a failure and returns fileFailed.
ExitStatus finishOutput(ExitStatus status);

// Runs the command with std::cout written to `file` atomically, or to the standard output if `file` is empty or "-".
// Throws Failure if the file is one of the inputs, or XML.
ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command);

// Returns what `action` writes to std::cerr, with control characters escaped, except separate line ends.
std::string diagnosticsOf(const std::function<void()>& action);

}  // namespace tool
