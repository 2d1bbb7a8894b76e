#include "io/failure.h"

#include "io/progress.h"
#include "io/terminal_text.h"

#include <cerrno>
#include <cstring>
#include <iostream>

namespace tool {

Failure Failure::ofSystem(const std::string& text, const std::string& name) {
  return Failure(text + ": " + std::strerror(errno), name);
}

ExitStatus report(const std::string& subject, const std::string& text, const std::string& details) {
  clearProgress();
  std::cerr << "qzjexxml: " << escapeForTerminal(subject) << ": " << escapeForTerminal(text) << '\n'
            << details << std::flush;
  return fileFailed;
}

}  // namespace tool
