// Names in messages.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// In double quotes. Of a name above 100 bytes, the first 100 with "..." behind them; UTF-8 is not cut within a
// character.
std::string inQuotes(std::string_view name);

// `; did you mean "NAME"?` with the nearest of the names, or nothing when none is near.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& names);

}  // namespace tool
