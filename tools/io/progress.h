// Progress: a line on the terminal that shows how far long work is.
#ifndef QZJEXXML_TOOLS_IO_PROGRESS_H
#define QZJEXXML_TOOLS_IO_PROGRESS_H

#include "io/redirection.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>

namespace tool {

// For a terminal on the standard error stream. The line is gone before anything else is written, on either stream.
class Progress {
 public:
  explicit Progress(std::size_t fileCount);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { clear(); }

  // Shows the file where there are many, or it is large.
  void show(std::size_t number, const std::string& file);
  void clear();

 private:
  // Passes everything on, once the line is cleared.
  class Clearing final : public std::streambuf {
   public:
    Clearing(Progress& shown, std::streambuf* passed) : progress(shown), next(passed) {}

   private:
    int_type overflow(int_type letter) override;
    std::streamsize xsputn(const char* text, std::streamsize length) override;
    int sync() override { return next->pubsync(); }

    Progress& progress;
    std::streambuf* next;
  };

  std::size_t count;
  bool isVisible = false;
  std::ostream terminal;
  Clearing output;
  Clearing errors;
  std::optional<Redirection> outputs;  // while there is a terminal
  std::optional<Redirection> errorOutputs;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_PROGRESS_H
