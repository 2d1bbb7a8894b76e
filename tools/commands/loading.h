// Loading descriptions as the library does, for the commands that print what a load gives.
#ifndef QZJEXXML_TOOLS_COMMANDS_LOADING_H
#define QZJEXXML_TOOLS_COMMANDS_LOADING_H

#include "commands/command_line.h"
#include "description/description.h"
#include "interface/document_load.h"
#include "io/library_diagnostics.h"

#include <qzjexxml/qzjexxml.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tool {

// The options of such a command.
struct LoadOptions {
  std::vector<std::string> files;
  std::string output;
  bool json = false;
  bool tree = false;
};

// Adds a command that runs `print` for each file, with its name, a path to open, and the heading of what it prints: the
// name, where there are several files. With --json, what keeps a file from loading is printed in an object of its own.
using LoadCommand = ExitStatus(const LoadOptions& options, const std::string& file, const char* path,
                               const std::string& heading);
void addLoadCommand(CommandLine& line, const char* name, const char* text, const char* example, LoadCommand* print);

// A load that writes anything has failed, which is reported under the name `file`.
ExitStatus outcomeOf(const std::string& file, const std::string& diagnostics);

struct Release {
  void operator()(KIVData* record) const { TermKIVData(&record); }
};
using Record = std::unique_ptr<KIVData, Release>;

// Whether there is no entry, as in that of a description of the other kind.
bool isEmpty(const KIVData& record);

// Loads the manifest at `path`.
ExitStatus loadRecord(const std::string& file, const char* path, Record& record);

// Loads the description at `path`, builds its tree, and has it used.
template <typename Tree>
ExitStatus loadTree(const std::string& file, const char* path, bool (*build)(Tree&),
                    const std::function<void(Tree&)>& use) {
  std::unique_ptr<jexxml::DocumentLoad> load;
  Tree tree;
  const ExitStatus outcome = outcomeOf(file, diagnosticsOf([&] {
                                         load = std::make_unique<jexxml::DocumentLoad>(path);
                                         tree.document = load->document();
                                         build(tree);
                                       }));
  if (outcome == allGood) {
    use(tree);
  }
  return outcome;
}

// Prints what a function of the library dumps: it begins with a line end and does not end its last line.
void printTree(const std::string& heading, const std::function<void()>& dump);

// Reports that a description is of the other kind, or of none: it loads, without an entry.
void warnOfOtherKind(const std::string& file, const Description& description, bool asManifest);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_LOADING_H
