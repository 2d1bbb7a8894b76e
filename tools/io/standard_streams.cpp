#include "io/standard_streams.h"

#include "io/descriptor.h"
#include "io/file_identity.h"
#include "io/safe_output.h"
#include "io/terminal_text.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <system_error>
#include <utility>

namespace tool {
namespace {

// With -o *.xml the shell passes an XML file as OUT. Printed output does not begin with '<'.
bool looksLikeDescription(const std::string& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) {
    return false;
  }
  std::ifstream content(file, std::ios::binary);
  constexpr std::string_view before("\xEF\xBB\xBF\xFE\xFF\0 \t\r\n", 10);
  for (int i = 0; i < 64 && before.find(static_cast<char>(content.peek())) != std::string_view::npos; ++i) {
    content.get();
  }
  return content.peek() == '<';
}

// The library writes each line end as a piece of its own. A line end inside another piece is part of a value.
class EscapedText : public std::stringbuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::string_view piece(text, static_cast<std::size_t>(length));
    const std::string safe = piece == "\n" ? "\n" : escapeForTerminal(piece);
    std::stringbuf::xsputn(safe.data(), static_cast<std::streamsize>(safe.size()));
    return length;
  }
};

}  // namespace

PrintedOutput::PrintedOutput(std::string outputName, int written)
    : name(std::move(outputName)), descriptor(written), buffer(std::size_t{1} << 16U), redirection(std::cout, this) {
  setp(buffer.data(), buffer.data() + buffer.size());
}

PrintedOutput::int_type PrintedOutput::overflow(int_type letter) {
  const bool isNone = traits_type::eq_int_type(letter, traits_type::eof());
  return sync() != 0 ? traits_type::eof() : isNone ? traits_type::not_eof(letter) : sputc(static_cast<char>(letter));
}

int PrintedOutput::sync() {
  if (pptr() != pbase()) {
    clearProgress();
  }
  if (error == 0 && !writeAll(descriptor, {pbase(), static_cast<std::size_t>(pptr() - pbase())})) {
    error = errno;
  }
  setp(buffer.data(), buffer.data() + buffer.size());
  return error == 0 ? 0 : -1;
}

ExitStatus finishOutput(ExitStatus status) {
  if (std::cout.flush()) {
    return status;
  }
  const auto& output = dynamic_cast<const PrintedOutput&>(*std::cout.rdbuf());
  errno = output.error;
  return report(output.name, Failure::ofSystem("cannot be written").what());
}

ExitStatus printTo(const std::string& file, const std::vector<std::string>& inputs,
                   const std::function<ExitStatus()>& command) {
  if (file.empty() || file == "-") {
    return command();
  }
  requireNotAnInput(file, identitiesOf(inputs));
  if (looksLikeDescription(file)) {
    throw Failure("is XML, which this command does not replace", file);
  }
  SafeOutput output(file);
  const PrintedOutput printed(file, output.descriptor());
  const ExitStatus status = command();
  if (std::cout.good() && (status == allGood || lseek(output.descriptor(), 0, SEEK_CUR) > 0)) {
    output.commit();
  }
  return status;
}

std::string diagnosticsOf(const std::function<void()>& action) {
  EscapedText text;
  const ScopedStreambuf redirection(std::cerr, &text);
  action();
  return text.str();
}

}  // namespace tool
