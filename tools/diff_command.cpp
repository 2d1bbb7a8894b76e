// qzjexxml diff: what differs between two manifests.
#include "command_line.h"
#include "commands.h"
#include "describing.h"
#include "each_file.h"
#include "input_file.h"
#include "loading.h"
#include "printed_output.h"
#include "terminal_text.h"

#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tool {
namespace {

using Values = std::map<std::string, std::string>;  // of the entries, by their names

Values valuesOf(const KIVData& record) {
  Values values;
  for (const auto& [name, path] : record.rootMacros) {
    values["root macro " + name] = " = " + path;
  }
  for (const auto& [source, entry] : record.fileMap) {
    values["file " + source] = " -> " + entry.target;
  }
  std::map<std::string, int> times;
  for (const std::string& path : record.varnixPath) {
    const int time = ++times[path];
    values["search path " + path + (time == 1 ? "" : ", time " + std::to_string(time))];
  }
  return values;
}

ExitStatus print(char sign, const std::string& name, const std::string& value) {
  std::cout << sign << ' ' << shown(name + value) << '\n';
  return differ;
}

// Prints a line for each entry that was added (+) or removed (-), or has another target or value (!). Returns
// differ when there is one, and wrongUsage, as diff(1) does, when a file does not load.
ExitStatus diffManifests(const std::string& oldFile, const std::string& newFile) {
  ExitStatus status = allGood;
  std::vector<Record> records;
  const ExitStatus loaded = forEachFile({oldFile, newFile}, [&](const std::string& file) {
    const InputFile input(file);
    return loadRecord(file, input.path(), records.emplace_back());
  });
  if (loaded != allGood) {
    return wrongUsage;
  }
  Values before = valuesOf(*records.front());
  const Values after = valuesOf(*records.back());
  for (const auto& [name, value] : after) {
    const auto old = before.extract(name);
    if (old.empty()) {
      status = print('+', name, value);
    } else if (old.mapped() != value) {
      status = print('!', name, old.mapped() + ", now" + value);
    }
  }
  for (const auto& [name, value] : before) {
    status = print('-', name, value);
  }
  if (status == allGood && records.front()->varnixPath != records.back()->varnixPath) {
    status = print('!', "search path", " in another order");
  }
  return finishOutput(status);
}

struct Options {
  std::string oldFile;
  std::string newFile;
  std::string output;
};

}  // namespace

void addDiff(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("diff", "Compare the entries of two manifests",
           [options] {
             return describe(options->output, {options->oldFile, options->newFile}, false,
                             [&] { return diffManifests(options->oldFile, options->newFile); });
           })
      .argument("OLD", options->oldFile, "The manifest before")
      .argument("NEW", options->newFile, "The manifest after")
      .output(options->output);
}

}  // namespace tool
