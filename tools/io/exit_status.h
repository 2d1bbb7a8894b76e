// The command's exit status.
#ifndef QZJEXXML_TOOLS_IO_EXIT_STATUS_H
#define QZJEXXML_TOOLS_IO_EXIT_STATUS_H

namespace tool {

// Of several outcomes, the worst is the greatest.
enum ExitStatus { allGood = 0, fileFailed = 1, differ = 1, wrongUsage = 2 };

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_EXIT_STATUS_H
