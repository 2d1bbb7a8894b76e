// Suppressions: the comments <!-- qzjexxml-ignore RULE --> before elements, and what they silence.
#pragma once

#include "description/rules.h"
#include "description/token_positions.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Stands for the comments before one element; 0 for none.
using SuppressionGroup = std::uint32_t;

class Suppressions {
 public:
  // Takes a comment if it is a suppression. `position` is the position behind it.
  void add(std::u16string_view comment, const ParserPosition& position);

  // What stood since the last element, or end of one.
  SuppressionGroup takePending();

  // Has the comments of the group, which stand before the root element, count for the whole file.
  void setWholeFile(SuppressionGroup group) { wholeFile = group; }

  // Whether a rule is silenced for the element that the group belongs to.
  bool silence(SuppressionGroup group, Rule rule);

  // With the position and the reason of each rule that silenced nothing.
  void forEachUnused(const std::function<void(const ParserPosition&, const std::string&)>& action) const;

 private:
  struct Suppression {
    ParserPosition position;
    SuppressionGroup group;
    Rules rules;
    std::string mistake;  // why it names no rule
  };

  struct Group {
    Rules rules;
    Rules used;
  };

  std::vector<Suppression> suppressions;
  std::vector<Group> groups = {{}};
  bool isPending = false;  // the last group
  SuppressionGroup wholeFile = 0;
};

}  // namespace tool
