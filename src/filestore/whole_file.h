// Reading a file whole, with the diagnostics of whoever asks for it.
#ifndef QZJEXXML_FILESTORE_WHOLE_FILE_H
#define QZJEXXML_FILESTORE_WHOLE_FILE_H

#include <qzjexxml/kiv_byte_array.h>

namespace jexxml {

// What a caller says, on a line of its own on the standard error stream, when nothing can be read.
struct ReadMessages {
  const char* noFileName;  // the name is null or empty
  const char* noContent;   // the file is empty, of 2 GiB or more, a folder, FIFO or device, or reading fails
};

// The content of `fileName`, or an empty array after one of the messages or, when the file cannot be
// opened, "Could not open file: " and its name.
KIVByteArray readWholeFile(const char* fileName, const ReadMessages& messages);

// A copy of the bytes followed by one NUL byte, in a block from new[] that the caller owns.
char* toNulTerminatedText(const KIVByteArray& bytes);

}  // namespace jexxml

#endif  // QZJEXXML_FILESTORE_WHOLE_FILE_H
