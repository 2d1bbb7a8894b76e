#include "io/printed_output.h"

#include "io/failure.h"
#include "io/file_identity.h"
#include "io/redirection.h"
#include "io/safe_output.h"

#include <ext/stdio_filebuf.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <system_error>

namespace tool {
namespace {

// What goes to finishOutput's user when printing fails.
std::string outputName = "standard output";

// A regular file that begins as XML does: in "-o *.xml" the first of the inputs meant. What is printed never does.
bool looksLikeDescription(const std::string& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) {
    return false;
  }
  std::ifstream content(file, std::ios::binary);
  for (int i = 0; i < 64; ++i) {
    const int byte = content.get();
    if (byte == '<') {
      return true;
    }
    if (std::string_view("\xEF\xBB\xBF\xFE\xFF\0 \t\r\n", 10).find(static_cast<char>(byte)) == std::string_view::npos) {
      return false;
    }
  }
  return false;
}

}  // namespace

ExitStatus finishOutput(ExitStatus status) {
  return std::cout.flush() ? status : report(outputName, "cannot be written");
}

ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command) {
  if (file.empty() || file == "-") {
    return command();
  }
  requireApart(file, identitiesOf(inputs));
  if (looksLikeDescription(file)) {
    throw Failure("is XML, which this command does not replace", file);
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
