#include "commands/loading.h"

#include "commands/running.h"
#include "description/description_json.h"
#include "io/failure.h"
#include "io/input_file.h"
#include "io/library_diagnostics.h"
#include "io/terminal_text.h"

#include <qzjexxml/qzjexxml.h>

#include <iostream>

namespace tool {
namespace {

void printJsonErrors(const std::string& file, const std::vector<Finding>& errors) {
  JsonWriter json;
  json.beginFile(file).key("errors");
  write(json, errors);
  json.endFile();
}

}  // namespace

ExitStatus printEach(const Options& options, Print* print) {
  const auto printFile = [&](const std::string& file) {
    try {
      const InputFile input(file);
      Description description(input.path());
      const std::string heading = options.files.size() > 1 ? escapeForTerminal(file) + ":\n" : "";
      if (!description.hasErrors() && print(options, file, description, heading)) {
        return allGood;
      }
      if (options.json) {
        printJsonErrors(file, description.findings);
      }
      return reportUnloadable(file, input.path());
    } catch (const Failure& failure) {
      if (options.json) {
        printJsonErrors(file, {{{}, Rule::unreadable, failure.what()}});
      }
      throw;
    }
  };
  return runWithParser(options, options.files, [&] { return forEachFile(options.files, printFile); });
}

void addLoadOptions(Command command) {
  command.files().output().json().flag("--tree", &Options::tree, "Print the tree of elements");
  command.excludes("--json", "--tree");
}

ExitStatus reportUnloadable(const std::string& file, const char* path) {
  return report(file, "cannot be loaded", diagnosticsOf([&] {
                  KIVData* record = nullptr;
                  InitKIVData(path, &record);
                  TermKIVData(&record);
                }));
}

void printTree(const std::string& heading, const std::function<void()>& dump) {
  std::cout << heading << diagnosticsOf(dump).substr(1) << '\n';
}

void warnOfOtherKind(const std::string& file, const Description& description, bool asManifest) {
  if (description.showsKind && description.isManifest() != asManifest) {
    report(file, asManifest ? "warning: this is a project description, which gives no entries"
                            : "warning: this is an archive manifest, of which nothing is checked");
  } else if (!description.showsKind && description.elements.front().node->hasChildNodes()) {
    report(file, "warning: this is neither an archive manifest nor a project description");
  }
}

}  // namespace tool
