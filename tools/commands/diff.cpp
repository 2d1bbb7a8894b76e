// qzjexxml diff: compares two manifests, or two project descriptions.
#include "commands/command_line.h"
#include "commands/record_rows.h"
#include "commands/running.h"
#include "description/description.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"
#include "manifest/populate_kiv_data.h"

#include <algorithm>
#include <deque>
#include <iostream>
#include <tuple>
#include <utility>

namespace tool {
namespace {

std::string ordinal(std::size_t number) {
  const std::size_t last = number % 100 / 10 == 1 ? 0 : number % 10;
  return std::to_string(number) + (last == 1 ? "st" : last == 2 ? "nd" : last == 3 ? "rd" : "th");
}

// Returns the names of the element and its ancestors, except the root element, each after a space.
std::string pathTo(const Element& element, const Description& description) {
  const Element& parent = description.elements[element.parent];
  return &parent == &element ? "" : pathTo(parent, description) + ' ' + element.kind->name;
}

// Rows whose names begin with the same text. The separator stands between a name and its value.
struct Group {
  std::string name;
  const char* separator = "";
};

struct Row {
  auto key() const { return std::tie(group, ownName); }
  auto name() const { return std::tie(group, ownName, number); }

  std::size_t group;
  std::string_view ownName;
  std::string_view value;
  std::size_t number = 1;  // among the rows with this key
};

// One description as rows, which refer to strings of `record` and `texts`.
struct Side {
  KIVData record;
  std::deque<std::string> texts;
  std::vector<Row> rows;

  // Numbers the rows with equal keys. Returns the rows ordered by name.
  std::vector<const Row*> ordered() {
    std::vector<Row*> pointers;
    std::ranges::transform(rows, std::back_inserter(pointers), [](Row& row) { return &row; });
    if (!std::ranges::is_sorted(pointers, {}, &Row::key)) {
      std::ranges::stable_sort(pointers, {}, &Row::key);
    }
    for (std::size_t i = 1; i < pointers.size(); ++i) {
      pointers[i]->number = pointers[i - 1]->key() == pointers[i]->key() ? pointers[i - 1]->number + 1 : 1;
    }
    return {pointers.begin(), pointers.end()};
  }
};

// Two descriptions of one kind.
class Comparison {
 public:
  // For a project, adds the elements, named by the attributes of the parent and their own required attributes; the tree
  // is empty. For a manifest, adds the record, and the elements whose attributes are not in the record.
  void add(std::size_t number, const Description& description, const jexxml::KivMaster& tree) {
    Side& side = sides.at(number);
    addElements(side, description);
    jexxml::populateKivData(tree, side.record);
    for (const Section& section : sections) {
      const bool isOrdered = section.separator == nullptr;
      const std::string name = section.row + std::string(" ");
      const std::size_t group = groupOf(name, {name, isOrdered ? "" : section.separator});
      section.forEach(side.record, [&](const std::string& key, const std::string& value) {
        side.rows.push_back({group, key, isOrdered ? std::string_view() : std::string_view(value)});
      });
    }
  }

  // Prints a line for each value that was added (+), removed (-) or changed (!), or one line if only the order changed.
  // Returns whether there is a difference.
  bool print();

 private:
  void addElements(Side& side, const Description& description) {
    constexpr auto unknown = static_cast<std::size_t>(-1);
    std::vector<std::size_t> groupsIn(description.elements.size(), unknown);  // by parent
    for (const Element& element : description.elements) {
      const bool isRoot = &element == &description.elements.front();
      const bool isInRecord = description.isManifest() && element.parent != 0;
      const std::string required = isInRecord ? "" : element.attributesText(Element::Which::required);
      std::string others = isInRecord ? "" : element.attributesText(Element::Which::others);
      if (required.empty() && others.empty()) {
        continue;
      }
      const Element& parent = description.elements[element.parent];
      std::size_t& group = groupsIn[element.parent];
      if (group == unknown) {
        const std::string path = pathTo(parent, description);
        group = path.empty() ? groupOf("", {})
                             : groupOf(path + parent.attributesText(Element::Which::all),
                                       {path.substr(1) + parent.attributesText(Element::Which::all, true) + ' '});
      }
      const std::string& key = side.texts.emplace_back((isRoot ? "root element" : element.kind->name) + required);
      side.rows.push_back({group, key, side.texts.emplace_back(std::move(others))});
    }
  }

  std::size_t groupOf(const std::string& id, const Group& group) {
    const auto [found, isNew] = groupNumbers.emplace(id, groups.size());
    if (isNew) {
      groups.push_back(group);
    }
    return found->second;
  }

  void printLine(char sign, const Row& row, std::string_view newValue = {}) const {
    const Group& group = groups[row.group];
    std::cout << sign << ' ' << escapeForTerminal(group.name) << escapeForTerminal(row.ownName)
              << (row.number > 1 ? " (" + ordinal(row.number) + ')' : "") << group.separator
              << escapeForTerminal(row.value);
    if (sign == '!') {
      std::cout << ", now" << group.separator << escapeForTerminal(newValue);
    }
    std::cout << '\n';
  }

  std::array<Side, 2> sides;
  std::map<std::string, std::size_t> groupNumbers;
  std::vector<Group> groups;
};

bool Comparison::print() {
  const std::vector<const Row*> before = sides[0].ordered();
  bool isSame = true;
  std::vector<const Row*> removed;
  auto old = before.begin();
  for (const Row* row : sides[1].ordered()) {
    for (; old != before.end() && (*old)->name() < row->name(); ++old) {
      removed.push_back(*old);
    }
    const bool isNew = old == before.end() || (*old)->name() != row->name();
    if (isNew || (*old)->value != row->value) {
      isNew ? printLine('+', *row) : printLine('!', **old, row->value);
      isSame = false;
    }
    old += isNew ? 0 : 1;
  }
  removed.insert(removed.end(), old, before.end());
  for (const Row* row : removed) {
    printLine('-', *row);
  }
  if (!isSame || !removed.empty()) {
    return true;
  }
  const auto moved = std::ranges::mismatch(sides[0].rows, sides[1].rows, {}, &Row::name, &Row::name).in2;
  if (moved != sides[1].rows.end()) {
    std::cout << "! " << escapeForTerminal(groups[moved->group].name) << escapeForTerminal(moved->ownName)
              << " in another order\n";
  }
  return moved != sides[1].rows.end();
}

// Returns differ, or wrongUsage, as diff(1) does, if a file does not load or the kinds differ.
ExitStatus diff(const Options& options) {
  Comparison comparison;
  std::vector<bool> kinds;  // isManifest() of the files that show their kind
  std::size_t side = 0;
  const ExitStatus status = forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    jexxml::KivMaster tree;
    const bool isProject = description.showsKind && !description.isManifest();
    if (description.hasErrors() || (!isProject && !description.build(tree))) {
      return description.reportUnloadable();
    }
    if (description.showsKind) {
      kinds.push_back(!isProject);
    }
    comparison.add(side++, description, tree);
    return allGood;
  });
  if (status != allGood) {
    return wrongUsage;
  }
  if (kinds.size() == 2 && kinds[0] != kinds[1]) {
    throw Failure(kinds[0] ? "is a project description, but the other file is a manifest"
                           : "is a manifest, but the other file is a project description",
                  options.files[1]);
  }
  return finishOutput(comparison.print() ? differ : allGood);
}

ExitStatus runDiff(const Options& options) {
  try {
    return runWithParser(options, diff);
  } catch (const Failure& failure) {
    report(failure.subject, failure.what());
    return wrongUsage;
  }
}

}  // namespace

void addDiff(CommandLine& line) {
  line.add("diff", "Compare two manifests, or two project descriptions", "diff old.xml new.xml", runDiff)
      .file("OLD", "The old description")
      .file("NEW", "The new description")
      .output();
}

}  // namespace tool
