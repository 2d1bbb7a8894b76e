// Suppressions: comments <!-- qzjexxml-ignore RULE --> before elements, which turn off warnings.
#pragma once

#include "description/rules.h"
#include "description/token_positions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {

// The comments before one element; 0 if there are none.
using SuppressionGroup = std::uint32_t;

class Suppressions {
 public:
  // Adds the comment if it is a suppression. `position` is its end.
  void add(std::u16string_view comment, const ParserPosition& position);

  // Returns the group of the comments since the last start or end of an element.
  SuppressionGroup takePending();

  // Applies the group, which precedes the root element, to the whole file.
  void setWholeFile(SuppressionGroup group) { wholeFile = group; }

  // Returns whether the rule is suppressed for the element of the group, and marks the suppression as used.
  bool silence(SuppressionGroup group, Rule rule);

  // For each rule that suppressed nothing, returns the position of the comment and the reason.
  std::vector<std::pair<ParserPosition, std::string>> unused() const;

 private:
  struct Comment {
    ParserPosition position;
    SuppressionGroup group;
    Rules rules = {};
    std::string mistake = "it names no rule";  // empty if all its names are rules
  };

  struct Group {
    Rules rules;
    Rules used;
  };

  std::vector<Comment> comments;
  std::vector<Group> groups = {{}};
  bool isPending = false;  // the next comment joins the last group
  SuppressionGroup wholeFile = 0;
};

}  // namespace tool
