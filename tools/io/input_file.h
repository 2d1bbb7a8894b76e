// Files that commands read.
#ifndef QZJEXXML_TOOLS_IO_INPUT_FILE_H
#define QZJEXXML_TOOLS_IO_INPUT_FILE_H

#include <string>

namespace tool {

// Throws Failure, "cannot be read: REASON", for a file that is missing, a folder, or not the user's to read. Devices,
// FIFOs and sockets are not opened.
void requireReadable(const std::string& file);

// A file that the library can open by its path. The standard input ("-") and FIFOs are copied into memory first.
class InputFile {
 public:
  // Throws Failure.
  explicit InputFile(const std::string& name);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // Valid while this object lives.
  const char* path() const { return openable.c_str(); }

 private:
  void copy(int input);

  std::string openable;
  int memory = -1;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_INPUT_FILE_H
