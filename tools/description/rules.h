// The rules of check. Their names never change; docs/mistakes.md explains them.
#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

enum class Rule : std::uint8_t {
  unreadable,
  badByte,
  notWellFormed,
  notValid,
  overLimit,
  notLoadable,
  unknownElement,
  entityElement,
  unknownAttribute,
  missingAttribute,
  emptyAttribute,
  ignoredText,
  overriddenEntry,
  sharedTarget,
  strayTarget,
  relativePath,
  wrongType,
  unusedSuppression,
  moreWarnings,
  count
};

using Rules = std::bitset<static_cast<std::size_t>(Rule::count)>;

std::string_view nameOf(Rule rule);

// An error keeps the description from loading. All other rules are warnings, which can be suppressed.
bool isError(Rule rule);

// Returns nothing if no rule has the name.
std::optional<Rule> ruleNamed(std::string_view name);

// Return an error message if no rule has the name, or (ignoreError) if the rule is an error; otherwise an empty text.
std::string ruleError(const std::string& name);
std::string ignoreError(const std::string& name);

}  // namespace tool
