// The rules: what a finding is about. docs/mistakes.md has a paragraph for each; their names never change.
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
  count  // of the rules
};

using Rules = std::bitset<static_cast<std::size_t>(Rule::count)>;

const char* nameOf(Rule rule);

// A finding of the rule keeps the description from loading. All others are warnings, which can be silenced.
bool isError(Rule rule);

// None when no rule has the name.
std::optional<Rule> ruleNamed(std::string_view name);

// Why a name is not that of a rule, or of one that can be silenced; empty when it is.
std::string ruleError(const std::string& name);
std::string ignoreError(const std::string& name);

}  // namespace tool
