// Text as a terminal may get it, and the room that it takes there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// The text, in the locale encoding or UTF-8, as a terminal may get it: control characters, which could move its
// cursor, begin a line or turn the direction of writing, as \u001B.
std::string escapeForTerminal(std::string_view text);

// How many columns of a terminal the text takes as escapeForTerminal() gives it, or more than `most` for a long one;
// where the locale does not know, a UTF-8 character takes one.
std::size_t displayWidth(const std::string& text, std::size_t most);

}  // namespace tool
