// Names in messages, and suggestions of names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Puts the name in double quotes, and cuts it after 100 bytes, but not within a UTF-8 character.
std::string inQuotes(std::string_view name);

// Returns `; did you mean "NAME"?` with the nearest name, or an empty text if no name is near.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& names);

}  // namespace tool
