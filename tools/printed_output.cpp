#include "printed_output.h"

#include "failure.h"
#include "redirection.h"
#include "safe_output.h"

#include <ext/stdio_filebuf.h>
#include <unistd.h>

#include <iostream>

namespace tool {
namespace {

// What goes to finishOutput's user when printing fails.
std::string outputName = "standard output";

}  // namespace

ExitStatus finishOutput(ExitStatus status) {
  return std::cout.flush() ? status : report(outputName, "cannot be written");
}

ExitStatus printTo(const std::string& file, const std::function<ExitStatus()>& command) {
  if (file.empty() || file == "-") {
    return command();
  }
  constexpr mode_t forAll = 0666;
  SafeOutput output(file, forAll);
  outputName = file;
  __gnu_cxx::stdio_filebuf<char> buffer(dup(output.descriptor()), std::ios::out);
  const Redirection redirection(std::cout, &buffer);
  const ExitStatus status = command();
  if (std::cout.good()) {
    output.commit();
  }
  return status;
}

}  // namespace tool
