#include "io/quoting.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace tool {

constexpr std::size_t far = 3;

// Returns the Levenshtein distance, or `far` if a name is long or the lengths differ too much.
static std::size_t distance(std::string_view from, std::string_view to) {
  constexpr std::size_t longest = 40;
  if (std::max(from.size(), to.size()) - std::min(from.size(), to.size()) >= far || from.size() > longest) {
    return far;
  }
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t k = 0; k < to.size(); ++k) {
      const std::size_t replaced = diagonal + (from[i] == to[k] ? 0 : 1);
      diagonal = row[k + 1];
      row[k + 1] = std::min({replaced, diagonal + 1, row[k] + 1});
    }
  }
  return row.back();
}

std::string inQuotes(std::string_view name) {
  std::size_t length = 100;
  if (name.size() <= length) {
    return '"' + std::string(name) + '"';
  }
  while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80) {
    --length;
  }
  return '"' + std::string(name.substr(0, length)) + "...\"";
}

std::string suggestion(std::string_view name, const std::vector<std::string_view>& names) {
  std::size_t least = far;
  std::string_view nearest;
  for (const std::string_view other : names) {
    const std::size_t steps = distance(name, other);
    if (steps < std::min(least, other.size())) {
      least = steps;
      nearest = other;
    }
  }
  return nearest.empty() ? "" : "; did you mean " + inQuotes(nearest) + "?";
}

}  // namespace tool
