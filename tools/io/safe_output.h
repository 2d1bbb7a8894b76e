// SafeOutput: a file that a command writes atomically.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace tool {

// Writes a temporary file beside the output, and renames it to the output in commit(). Without commit(), or if a signal
// ends the program, the output is unchanged and the temporary file is removed. Writes directly to devices, FIFOs, open
// files (/dev/stdout) and "-", the standard output. Only one object may exist. Throws Failure.
class SafeOutput {
 public:
  // A new file has `mode`, less the umask; an existing one keeps its mode. Without `replace`, commit() refuses an
  // existing file.
  explicit SafeOutput(const std::string& file, bool replace = true, mode_t mode = 0666);
  SafeOutput(const SafeOutput&) = delete;
  ~SafeOutput();

  int descriptor() const { return output; }

  // Empty if the output is written directly.
  const std::string& temporaryName() const { return temporary; }

  void write(std::string_view bytes) const;
  void commit();

 private:
  const std::string name;  // for messages
  std::string target;      // without symbolic links
  std::string temporary;
  const bool mayReplace;
  const mode_t modeOfNew;
  int output = -1;
};

// Throws Failure if the output exists as a regular file, unless `force`.
void requireReplaceable(const std::string& file, bool force);

}  // namespace tool
