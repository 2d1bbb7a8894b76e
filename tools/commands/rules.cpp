// qzjexxml rules: lists the rules of check, or explains a rule.
#include "description/rules.h"

#include "commands/command_line.h"
#include "io/standard_streams.h"
#include "texts.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

namespace tool {

// Returns the paragraph of the rule in docs/mistakes.md.
static std::string_view paragraphOf(Rule rule) {
  const std::string start = "\n**" + std::string(nameOf(rule)) + "**: ";
  const std::string_view text = std::string_view(mistakesText);
  const std::size_t begin = text.find(start) + start.size();
  return text.substr(begin, text.find("\n\n", begin) - begin);
}

static std::string firstSentence(std::string_view paragraph) {
  std::string text = std::string(paragraph) + ' ';
  std::ranges::replace(text, '\n', ' ');
  return text.substr(0, text.find(". "));
}

static ExitStatus printRules(const Options& options) {
  if (!options.key.empty()) {
    std::cout << paragraphOf(*ruleNamed(options.key)) << '\n';
  }
  for (std::size_t i = 0; options.key.empty() && i < Rules().size(); ++i) {
    const auto rule = static_cast<Rule>(i);
    std::cout << std::left << std::setw(19) << nameOf(rule) << (isError(rule) ? "error    " : "warning  ")
              << firstSentence(paragraphOf(rule)) << '\n';
  }
  return finishOutput(allGood);
}

void addRules(CommandLine& line) {
  line.add("rules", "List the rules of check, or explain the rule NAME", "rules stray-target", printRules)
      .option("NAME", &Options::key, "", "The rule", ruleError);
}

}  // namespace tool
