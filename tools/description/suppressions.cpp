#include "description/suppressions.h"

#include <algorithm>
#include <optional>

namespace tool {
namespace {

// Takes the next word off the text; empty when there is none. Names of rules are of ASCII.
std::string takeWord(std::u16string_view& text) {
  constexpr std::u16string_view spaces = u" \t\r\n";
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

void Suppressions::add(std::u16string_view comment, const ParserPlace& place) {
  if (takeWord(comment) != "qzjexxml-ignore") {
    return;
  }
  Suppression& suppression = suppressions.emplace_back(Suppression{place, {}, {}, {}});
  std::string name = takeWord(comment);
  suppression.mistake = name.empty() ? "it names no rule" : "";
  for (; !name.empty() && suppression.mistake.empty(); name = takeWord(comment)) {
    suppression.mistake = mistakeInIgnoring(name);
    if (suppression.mistake.empty()) {
      suppression.rules.set(static_cast<std::size_t>(*ruleNamed(name)));
    }
  }
}

SuppressionRange Suppressions::takePending() {
  const SuppressionRange range{.first = pending, .last = static_cast<std::uint32_t>(suppressions.size())};
  pending = range.last;
  return range;
}

bool Suppressions::silence(const SuppressionRange& range, Rule rule) {
  const auto bit = static_cast<std::size_t>(rule);
  bool silenced = false;
  for (std::uint32_t i = range.first; i < range.last; ++i) {
    if (suppressions[i].rules.test(bit)) {
      suppressions[i].used.set(bit);
      silenced = true;
    }
  }
  return silenced;
}

void Suppressions::forEachUseless(const std::function<void(const ParserPlace&, const std::string&)>& action) const {
  for (const auto& [place, rules, used, mistake] : suppressions) {
    if (!mistake.empty()) {
      action(place, mistake);
    }
    const Rules useless = rules & ~used;
    for (std::size_t i = 0; i < useless.size(); ++i) {
      if (useless.test(i)) {
        action(place, "there is no \"" + std::string(nameOf(static_cast<Rule>(i))) + "\" here");
      }
    }
  }
}

}  // namespace tool
