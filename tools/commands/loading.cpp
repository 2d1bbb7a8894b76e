#include "commands/loading.h"

#include "commands/running.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"

#include <iostream>

namespace tool {

ExitStatus printEach(const Options& options, Print* print) {
  return forEachFile(options.files, [&](const std::string& file) {
    Description description(file);
    const std::string heading = options.files.size() > 1 ? escapeForTerminal(file) + ":\n" : "";
    if (!description.hasErrors() && print(options, description, heading)) {
      return allGood;
    }
    if (options.json) {
      JsonWriter json(file);
      json.key("errors");
      description.writeFindings(json);
    }
    return description.reportUnloadable();
  });
}

void addLoadOptions(Command command) {
  command.files().output().json().flag("--tree", &Options::tree, "Print the tree of elements");
  command.excludes("--json", "--tree");
}

void printTree(const std::string& heading, const std::function<void()>& dump) {
  std::cout << heading << diagnosticsOf(dump).substr(1) << '\n';
}

void warnOfOtherKind(const Description& description, bool asManifest) {
  if (description.showsKind && description.isManifest() != asManifest) {
    report(description.file, asManifest ? "warning: this is a project description, which gives no entries"
                                        : "warning: this is an archive manifest, of which nothing is checked");
  } else if (!description.showsKind && description.elements.front().node->hasChildNodes()) {
    report(description.file, "warning: this is neither an archive manifest nor a project description");
  }
}

}  // namespace tool
