// qzjexxml project: loads project descriptions, and prints their trees.
#include "commands/commands.h"
#include "commands/loading.h"
#include "description/description_json.h"
#include "project/nox_dump.h"

#include <string>

namespace tool {
namespace {

ExitStatus printProject(const LoadOptions& options, const std::string& file, const char* path,
                        const std::string& heading) {
  const ExitStatus outcome =
      loadTree<jexxml::NoxMaster>(file, path, jexxml::buildNoxMaster, [&](jexxml::NoxMaster& tree) {
        if (options.tree) {
          printTree(heading, [&] { dumpNoxMaster(tree); });
        }
      });
  if (outcome == allGood) {
    const Description description(path);
    warnOfOtherKind(file, description, false);
    if (options.json) {
      JsonWriter json;
      json.beginFile(file).key("project");
      write(json, description);
      json.endFile();
    }
  }
  return outcome;
}

}  // namespace

void addProject(CommandLine& line) {
  addLoadCommand(line, "project", "Load project descriptions, and print them with --json or --tree",
                 "project --tree project.xml", printProject);
}

}  // namespace tool
