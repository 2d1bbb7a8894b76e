// Reading a description with the places of what is in it, and of what a load would silently ignore.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_READER_H
#define QZJEXXML_TOOLS_DESCRIPTION_READER_H

#include "description.h"

namespace tool {

// Reads the file as a load does, up to a fatal error. What cannot be read is a finding. Texts are in the local code
// page. Throws std::bad_alloc. REQUIRES: the parser library is started.
Description readDescription(const char* path);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_READER_H
