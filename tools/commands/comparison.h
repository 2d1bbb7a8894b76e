// Comparison: what a description says, as named values of which one file has others than another.
#ifndef QZJEXXML_TOOLS_COMMANDS_COMPARISON_H
#define QZJEXXML_TOOLS_COMMANDS_COMPARISON_H

#include "description/description.h"

#include <qzjexxml/kiv_data.h>

#include <array>
#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tool {

// Of two descriptions of one kind.
class Comparison {
 public:
  enum class Side { before, after };

  // Adds the elements of a project, each named by its parent's attributes and those that it is required to have; of a
  // manifest, those whose attributes are not in its record, and the record. A project has no tree.
  void add(Side side, const Description& description, const jexxml::KivMaster& tree);

  // Prints a line for each value that was added (+) or removed (-), or is another (!), or one line when only their
  // order is. Returns whether there is a difference.
  bool print();

 private:
  // What the name of a row begins with, and what stands between its name and its value.
  struct Group {
    std::string name;
    const char* separator = "";
  };

  struct Row {
    auto name() const { return std::tie(group, key, number); }

    std::size_t group;
    std::string_view key;
    std::string_view value;
    std::size_t number = 1;  // among those with this key
  };

  struct Rows {
    KIVData record;  // the rows refer to its texts, or to these
    std::deque<std::string> texts;
    std::vector<Row> rows;
  };

  void addRecord(Rows& rows, const jexxml::KivMaster& tree);
  std::size_t groupOf(const std::string& id, const Group& group);
  std::size_t groupIn(const Element& parent, const Description& description);
  static std::vector<const Row*> ordered(Rows& side);
  void printLine(char sign, const Row& row, std::string_view newValue) const;

  std::array<Rows, 2> sides;
  std::map<std::string, std::size_t> groupNumbers;
  std::vector<Group> groups;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_COMPARISON_H
