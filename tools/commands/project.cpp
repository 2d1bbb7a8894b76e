// qzjexxml project: loads project descriptions, and prints their trees.
#include "commands/commands.h"
#include "commands/loading.h"
#include "description/description_json.h"
#include "project/nox_dump.h"

#include <string>

namespace tool {
namespace {

bool printProject(const Options& options, const std::string& file, Description& description,
                  const std::string& heading) {
  jexxml::NoxMaster tree;
  if (!description.build(tree)) {
    return false;
  }
  warnOfOtherKind(file, description, false);
  if (options.tree) {
    printTree(heading, [&] { dumpNoxMaster(tree); });
  }
  if (options.json) {
    JsonWriter json;
    json.beginFile(file).key("project");
    write(json, description);
    json.endFile();
  }
  return true;
}

}  // namespace

void addProject(CommandLine& line) {
  addLoadOptions(line.add("project", "Load project descriptions, and print them with --json or --tree",
                          "project --tree project.xml",
                          [](const Options& options) { return printEach(options, printProject); }));
}

}  // namespace tool
