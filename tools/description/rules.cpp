#include "description/rules.h"

#include "io/quoting.h"

#include <algorithm>
#include <array>

namespace tool {

constexpr std::array<std::string_view, static_cast<std::size_t>(Rule::count)> names = {
    "unreadable",      "bad-byte",        "not-well-formed",    "not-valid",         "over-limit",
    "not-loadable",    "unknown-element", "entity-element",     "unknown-attribute", "missing-attribute",
    "empty-attribute", "ignored-text",    "overridden-entry",   "shared-target",     "stray-target",
    "relative-path",   "wrong-type",      "unused-suppression", "more-warnings",
};

std::string_view nameOf(Rule rule) { return names.at(static_cast<std::size_t>(rule)); }

bool isError(Rule rule) { return rule <= Rule::notLoadable; }

std::optional<Rule> ruleNamed(std::string_view name) {
  const auto* found = std::ranges::find(names, name);
  return found == names.end() ? std::nullopt : std::optional(static_cast<Rule>(found - names.begin()));
}

std::string ruleError(const std::string& name) {
  return ruleNamed(name) ? "" : "there is no rule " + inQuotes(name) + suggestion(name, {names.begin(), names.end()});
}

std::string ignoreError(const std::string& name) {
  const std::optional<Rule> rule = ruleNamed(name);
  return rule && isError(*rule) ? inQuotes(name) + " is an error, which cannot be ignored" : ruleError(name);
}

}  // namespace tool
