// Reading a file whole, with the caller's diagnostics.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

namespace jexxml {

// The caller's diagnostics, each a line on the standard error stream.
struct ReadMessages {
  const char* noFileName;  // the name is null or empty
  const char* noContent;   // the file is empty, of 2 GiB or more, a directory, FIFO or device, or reading fails
};

// The content of `fileName`, or an empty array after one of the messages or the one of a file that cannot be opened,
// which is the same for all callers.
KIVByteArray readWholeFile(const char* fileName, const ReadMessages& messages);

// A copy of the bytes followed by one NUL byte, in a block from new[] that the caller owns.
char* toNulTerminatedText(const KIVByteArray& bytes);

}  // namespace jexxml
