#include "description/suppressions.h"

#include <sstream>

namespace tool {

// Replaces characters above ASCII, which no name of a rule has.
void Suppressions::add(std::u16string_view comment, const ParserPosition& position) {
  constexpr std::size_t longest = 2'000;
  if (comment.find(u"qzjexxml-ignore") == std::u16string_view::npos) {
    return;
  }
  std::string text;
  for (const char16_t letter : comment.substr(0, longest)) {
    text += letter == u',' ? ' ' : letter < 0x80 ? static_cast<char>(letter) : '?';
  }
  std::istringstream words(text);
  std::string word;
  if (!(words >> word) || word != "qzjexxml-ignore") {
    return;
  }
  if (!std::exchange(isPending, true)) {
    groups.emplace_back();
  }
  Comment& added = comments.emplace_back(Comment{position, static_cast<SuppressionGroup>(groups.size() - 1)});
  while (words >> word && (added.mistake = ignoreError(word)).empty()) {
    added.rules.set(static_cast<std::size_t>(*ruleNamed(word)));
  }
  groups.back().rules |= added.rules;
}

SuppressionGroup Suppressions::takePending() {
  return std::exchange(isPending, false) ? static_cast<SuppressionGroup>(groups.size() - 1) : 0;
}

bool Suppressions::silence(SuppressionGroup group, Rule rule) {
  const auto bit = static_cast<std::size_t>(rule);
  const auto isSilencedBy = [bit](Group& applied) {
    applied.used.set(bit, applied.rules.test(bit));
    return applied.rules.test(bit);
  };
  return isSilencedBy(groups[group]) || isSilencedBy(groups[wholeFile]);
}

std::vector<std::pair<ParserPosition, std::string>> Suppressions::unused() const {
  std::vector<std::pair<ParserPosition, std::string>> reasons;
  for (const Comment& comment : comments) {
    if (!comment.mistake.empty()) {
      reasons.emplace_back(comment.position, "the comment is not understood: " + comment.mistake);
    }
    const Rules unusedRules = comment.rules & ~groups[comment.group].used;
    for (std::size_t i = 0; i < unusedRules.size(); ++i) {
      if (unusedRules.test(i)) {
        const std::string name(nameOf(static_cast<Rule>(i)));
        reasons.emplace_back(comment.position, "the comment suppresses nothing: there is no \"" + name + "\" here");
      }
    }
  }
  return reasons;
}

}  // namespace tool
