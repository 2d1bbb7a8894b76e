// Text for a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// Escapes control characters, which could move the cursor, begin a line or change the direction of writing, as \u001B.
// The text is in the locale encoding or UTF-8.
std::string escapeForTerminal(std::string_view text);

// Returns the number of columns of the escaped text, or any number above `most` for a wide text. A UTF-8 character
// counts as one column if the locale does not give its width.
std::size_t displayWidth(const std::string& text, std::size_t most);

}  // namespace tool
