#include "outcome.h"

#include <algorithm>
#include <iostream>
#include <sstream>

namespace tool {
namespace {

// Lends the standard error stream another buffer.
class Redirection {
 public:
  explicit Redirection(std::streambuf* buffer) : standard(std::cerr.rdbuf(buffer)) {}
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;
  ~Redirection() { std::cerr.rdbuf(standard); }

 private:
  std::streambuf* standard;
};

}  // namespace

ExitStatus report(const std::string& subject, const std::string& text, const std::string& details) {
  std::cerr << "qzjexxml: " << subject << ": " << text << '\n' << details << std::flush;
  return fileFailed;
}

std::string diagnosticsOf(const std::function<void()>& action) {
  std::ostringstream text;
  const Redirection redirection(text.rdbuf());
  action();
  return text.str();
}

ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command) {
  ExitStatus status = allGood;
  for (const std::string& file : files) {
    status = std::max(status, command(file));
  }
  return finishOutput(status);
}

ExitStatus finishOutput(ExitStatus status) {
  return std::cout.flush() ? status : report("standard output", "cannot be written");
}

}  // namespace tool
