#include "description/suppressions.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tool {
namespace {

// Takes the next word off the text; empty when there is none. Names of rules are of ASCII.
std::string takeWord(std::u16string_view& text) {
  constexpr std::u16string_view spaces = u" \t\r\n,";
  constexpr std::size_t longest = 100;
  text.remove_prefix(std::min(text.find_first_not_of(spaces), text.size()));
  const std::u16string_view word = text.substr(0, text.find_first_of(spaces));
  text.remove_prefix(word.size());
  std::string name;
  for (const char16_t letter : word.substr(0, longest)) {
    name += letter < 0x80 ? static_cast<char>(letter) : '?';
  }
  return name;
}

}  // namespace

void Suppressions::add(std::u16string_view comment, const ParserPosition& position) {
  if (takeWord(comment) != "qzjexxml-ignore") {
    return;
  }
  if (!isPending) {
    groups.emplace_back();
    isPending = true;
  }
  const auto group = static_cast<SuppressionGroup>(groups.size() - 1);
  Suppression& suppression = suppressions.emplace_back(Suppression{position, group, {}, {}});
  std::string name = takeWord(comment);
  suppression.mistake = name.empty() ? "it names no rule" : "";
  for (; !name.empty() && suppression.mistake.empty(); name = takeWord(comment)) {
    suppression.mistake = ignoreError(name);
    if (suppression.mistake.empty()) {
      suppression.rules.set(static_cast<std::size_t>(*ruleNamed(name)));
    }
  }
  groups.back().rules |= suppression.rules;
}

SuppressionGroup Suppressions::takePending() {
  return std::exchange(isPending, false) ? static_cast<SuppressionGroup>(groups.size() - 1) : 0;
}

bool Suppressions::silence(SuppressionGroup group, Rule rule) {
  const auto bit = static_cast<std::size_t>(rule);
  const auto isSilencedBy = [bit](Group& silencing) {
    silencing.used.set(bit, silencing.rules.test(bit));
    return silencing.rules.test(bit);
  };
  return isSilencedBy(groups[group]) || isSilencedBy(groups[wholeFile]);
}

void Suppressions::forEachUnused(const std::function<void(const ParserPosition&, const std::string&)>& action) const {
  for (const auto& [position, group, rules, mistake] : suppressions) {
    if (!mistake.empty()) {
      action(position, mistake);
    }
    const Rules unused = rules & ~groups[group].used;
    for (std::size_t i = 0; i < unused.size(); ++i) {
      if (unused.test(i)) {
        action(position, "there is no \"" + std::string(nameOf(static_cast<Rule>(i))) + "\" here");
      }
    }
  }
}

}  // namespace tool
