// Reads whole files.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

namespace jexxml {

// The caller's diagnostics, each a line on the standard error stream.
struct ReadMessages {
  const char* noFileName;  // the name is null or empty
  const char* noContent;   // the file is empty, has 2 GiB or more, is a directory, FIFO or device, or reading fails
};

// Returns the content of `fileName`. Returns an empty array after one of the messages, or after "Could not open file: "
// and the name.
KIVByteArray readWholeFile(const char* fileName, const ReadMessages& messages);

// A copy of the bytes followed by one NUL byte, in a block from new[] that the caller owns.
char* toNulTerminatedText(const KIVByteArray& bytes);

}  // namespace jexxml
