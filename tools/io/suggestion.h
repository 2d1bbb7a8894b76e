// The name that a writer may have meant.
#ifndef QZJEXXML_TOOLS_IO_SUGGESTION_H
#define QZJEXXML_TOOLS_IO_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// `; did you mean "NAME"?` with the nearest of the names, or nothing when none is near.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& names);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_IO_SUGGESTION_H
