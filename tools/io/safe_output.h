// SafeOutput: a file that a command writes, without harm to what is there.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace tool {

// Where nothing or a regular file stands, also behind links, the file is written beside it, and put in its place by
// commit(). Devices, FIFOs, open files (/dev/stdout) and "-", the standard output, are written through. Without
// commit(), and when a signal ends the program, nothing is left and nothing was changed. One at a time. Throws Failure,
// "cannot be written: REASON".
class SafeOutput {
 public:
  // A new file has `mode`, less the umask; one that replaces another has that one's mode. Without `replace`, commit()
  // refuses when the file exists.
  SafeOutput(const std::string& file, mode_t mode, bool replace = true);
  SafeOutput(const SafeOutput&) = delete;
  SafeOutput& operator=(const SafeOutput&) = delete;
  ~SafeOutput();

  int descriptor() const { return output; }

  // The name until commit(); empty for what is written through.
  const std::string& temporaryName() const { return temporary; }

  void write(std::string_view bytes) const;
  void commit();

 private:
  std::string name;    // as given
  std::string target;  // behind links
  std::string temporary;
  bool mayReplace;
  int output = -1;
};

// Throws Failure when the output would replace a file without `force`.
void requireReplaceable(const std::string& file, bool force);

}  // namespace tool
