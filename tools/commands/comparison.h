// Comparison: what a description says, as named values of which one file has others than another.
#ifndef QZJEXXML_TOOLS_COMMANDS_COMPARISON_H
#define QZJEXXML_TOOLS_COMMANDS_COMPARISON_H

#include "description/description.h"

#include <qzjexxml/kiv_data.h>

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace tool {

// Of two descriptions of one kind.
class Comparison {
 public:
  // Adds the entries of a manifest's record.
  void add(const KIVData& record);

  // Adds the elements of a project: each is named by its parent's attributes and those that it is required to have.
  void add(const Description& description);

  // Once two are added: prints a line for each value that was added (+) or removed (-), or is another (!), or one line
  // when only their order is. Returns whether there is a difference.
  bool print() const;

 private:
  // Texts begin with a blank. The parent is a number, so that a long one costs nothing for each child.
  struct Name {
    bool operator==(const Name&) const = default;
    bool operator<(const Name& other) const { return std::tie(parent, own) < std::tie(other.parent, other.own); }

    std::size_t parent;
    std::string own;
  };

  struct Side {
    std::map<Name, std::string> values;
    std::map<Name, int> times;  // that a name was given
    std::vector<Name> order;    // of those whose order counts
  };

  Side& start();
  static Name add(Side& side, Name name, const std::string& value);
  std::size_t numberOf(const Element& parent, const Description& description);
  void printLine(char sign, const Name& name, const std::string& value) const;

  std::vector<Side> sides;
  std::map<std::string, std::size_t> parents;
  std::vector<std::string> shownParents;  // by their numbers
  std::string ordered;                    // what has an order
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_COMPARISON_H
