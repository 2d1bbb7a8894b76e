// Suppressions: the comments <!-- qzjexxml-ignore RULE --> before elements, and what they silence.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_SUPPRESSIONS_H
#define QZJEXXML_TOOLS_DESCRIPTION_SUPPRESSIONS_H

#include "description/rules.h"
#include "description/token_places.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Those that stand before one element.
struct SuppressionRange {
  std::uint32_t first = 0;
  std::uint32_t last = 0;  // behind the last one
};

class Suppressions {
 public:
  // A comment, whose place is behind it. Other comments are none of these.
  void add(std::u16string_view comment, const ParserPlace& place);

  // What stood since the last element, or end of one.
  SuppressionRange takePending();

  // Whether a rule is silenced for the element that the range belongs to.
  bool silence(const SuppressionRange& range, Rule rule);

  // With the place and the reason of each rule that silenced nothing.
  void forEachUseless(const std::function<void(const ParserPlace&, const std::string&)>& action) const;

 private:
  struct Suppression {
    ParserPlace place;
    Rules rules;
    Rules used;
    std::string mistake;  // why it names no rule
  };

  std::vector<Suppression> suppressions;
  std::uint32_t pending = 0;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_SUPPRESSIONS_H
