#include "commands/loading.h"

namespace tool {

void addLoadOptions(Command command) {
  command.files().output().json().flag("--tree", &Options::tree, "Print the tree of elements", "--json");
}

void warnOfOtherKind(const Description& description, bool asManifest) {
  if (description.showsKind && description.isManifest() != asManifest) {
    report(description.file, asManifest ? "warning: the file is a project description, which gives no entries"
                                        : "warning: the file is an archive manifest, so nothing is checked");
  } else if (!description.showsKind && description.elements.front().node->hasChildNodes()) {
    report(description.file, "warning: the file is neither an archive manifest nor a project description");
  }
}

ExitStatus reportUnloadable(const Options& options, const Description& description) {
  if (options.json) {
    JsonWriter json(description.file);
    json.key("errors");
    description.writeFindings(json);
  }
  return description.reportUnloadable();
}

}  // namespace tool
