// The place of a byte that the parser cannot read.
#ifndef QZJEXXML_TOOLS_BAD_BYTE_H
#define QZJEXXML_TOOLS_BAD_BYTE_H

#include "description.h"

#include <qzjexxml/kiv_byte_array.h>

namespace tool {

// If the finding is of a byte that is not UTF-8, corrects its place and text: the parser's place is where it began to
// read a stretch of the file.
void findBadByte(const KIVByteArray& bytes, Finding& finding);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_BAD_BYTE_H
