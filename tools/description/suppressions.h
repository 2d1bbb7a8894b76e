// Suppressions: the comments <!-- qzjexxml-ignore RULE --> before elements, and what they silence.
#pragma once

#include "description/rules.h"
#include "description/token_positions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

// Stands for the comments before one element; 0 for none.
using SuppressionGroup = std::uint32_t;

class Suppressions {
 public:
  // Takes a comment if it is a suppression. `position` is the position behind it.
  void add(std::u16string_view comment, const ParserPosition& position);

  // Returns the comments since the last element, or end of one.
  SuppressionGroup takePending();

  // Has the comments of the group, which stand before the root element, count for the whole file.
  void setWholeFile(SuppressionGroup group) { wholeFile = group; }

  // Returns whether a rule is silenced for the element that the group belongs to.
  bool silence(SuppressionGroup group, Rule rule);

  // Returns the position and the reason of each rule that silenced nothing.
  std::vector<std::pair<ParserPosition, std::string>> unused() const;

 private:
  struct Comment {
    ParserPosition position;
    SuppressionGroup group;
    Rules rules = {};
    std::string mistake = "it names no rule";  // empty where it names rules only
  };

  struct Group {
    Rules rules;
    Rules used;
  };

  std::vector<Comment> comments;
  std::vector<Group> groups = {{}};
  bool isPending = false;  // the last group
  SuppressionGroup wholeFile = 0;
};

}  // namespace tool
