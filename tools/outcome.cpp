#include "outcome.h"

#include "safe_output.h"

#include <ext/stdio_filebuf.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <iostream>
#include <new>
#include <sstream>

namespace tool {
namespace {

// Lends a standard stream another buffer.
class Redirection {
 public:
  Redirection(std::ostream& lent, std::streambuf* buffer) : stream(lent), standard(lent.rdbuf(buffer)) {}
  Redirection(const Redirection&) = delete;
  Redirection& operator=(const Redirection&) = delete;
  ~Redirection() { stream.rdbuf(standard); }

 private:
  std::ostream& stream;
  std::streambuf* standard;
};

// The library writes its line ends by themselves; any other one is part of a value.
class ShownText : public std::stringbuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    const std::string_view piece(text, static_cast<std::size_t>(length));
    const std::string safe = piece == "\n" ? "\n" : shown(piece);
    std::stringbuf::xsputn(safe.data(), static_cast<std::streamsize>(safe.size()));
    return length;
  }
};

// What goes to finishOutput's user when printing fails.
std::string outputName = "standard output";

bool isControl(wint_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

// A line on the terminal that goes away again.
class Progress {
 public:
  explicit Progress(std::size_t fileCount) : count(fileCount) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  void show(std::size_t number, const std::string& file) {
    constexpr std::size_t manyFiles = 50;
    constexpr std::uintmax_t longFile = 50'000'000;
    if (!isTerminal) {
      return;
    }
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (count >= manyFiles || (!error && size > longFile)) {
      std::cerr << "\r\033[K" << number << " of " << count << ": " << shown(file) << std::flush;
      visible = true;
    }
  }

  void clear() {
    if (visible) {
      std::cerr << "\r\033[K" << std::flush;
      visible = false;
    }
  }

 private:
  const bool isTerminal = isatty(STDERR_FILENO) == 1;
  std::size_t count;
  bool visible = false;
};

}  // namespace

Failure Failure::ofSystem(const std::string& text, const std::string& name) {
  return Failure(text + ": " + std::strerror(errno), name);
}

std::string shown(std::string_view text) {
  if (std::ranges::all_of(text, [](char letter) { return letter >= ' ' && letter <= '~'; })) {
    return std::string(text);
  }
  std::string result;
  while (!text.empty()) {
    wchar_t character = 0;
    std::mbstate_t state{};
    std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
    if (length == 0 || length > text.size()) {  // a NUL, or not of the locale's code page
      length = 1;
      character = static_cast<unsigned char>(text[0]);
      if (character == 0xC2 && text.size() > 1) {  // UTF-8 for U+0080 to U+00BF
        length = 2;
        character = static_cast<unsigned char>(text[1]);
      }
      character = length == 1 && character >= 0x80 ? L' ' : character;
    }
    if (isControl(static_cast<wint_t>(character))) {
      std::array<char, 16> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04X", static_cast<unsigned>(character));
      result += escape.data();
    } else {
      result += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return result;
}

ExitStatus report(const std::string& subject, const std::string& text, const std::string& details) {
  std::cerr << "qzjexxml: " << shown(subject) << ": " << shown(text) << '\n' << details << std::flush;
  return fileFailed;
}

std::string diagnosticsOf(const std::function<void()>& action) {
  ShownText text;
  const Redirection redirection(std::cerr, &text);
  action();
  return text.str();
}

ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command) {
  ExitStatus status = allGood;
  Progress progress(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    progress.show(i + 1, files[i]);
    try {
      status = std::max(status, command(files[i]));
    } catch (const Failure& failure) {
      status = std::max(status, report(failure.subject.empty() ? files[i] : failure.subject, failure.what()));
    } catch (const std::bad_alloc&) {
      status = std::max(status, report(files[i], "there is not enough memory"));
    }
    progress.clear();
  }
  return finishOutput(status);
}

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
