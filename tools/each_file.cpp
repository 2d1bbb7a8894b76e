#include "each_file.h"

#include "failure.h"
#include "printed_output.h"
#include "terminal_text.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <new>
#include <system_error>

namespace tool {
namespace {

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

}  // namespace tool
