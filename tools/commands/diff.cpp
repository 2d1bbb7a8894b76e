// qzjexxml diff: what differs between two manifests, or two project descriptions.
#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/comparison.h"
#include "commands/each_file.h"
#include "commands/loading.h"
#include "commands/run_with_parser.h"
#include "description/description.h"
#include "io/failure.h"
#include "io/input_file.h"
#include "io/printed_output.h"

#include <memory>
#include <string>

namespace tool {
namespace {

struct Options {
  std::string oldFile;
  std::string newFile;
  std::string output;
};

enum class Kind { either, manifest, project };

// Adds what is compared of a file.
ExitStatus load(const std::string& file, Comparison::Side side, Comparison& comparison, Kind& kind) {
  return forEachFile({file}, [&](const std::string&) {
    const InputFile input(file);
    Description description(input.path());
    kind = !description.showsKind ? Kind::either : description.isManifest() ? Kind::manifest : Kind::project;
    jexxml::KivMaster tree;
    if (description.hasErrors() || (kind != Kind::project && !description.build(tree))) {
      return reportUnloadable(file, input.path());
    }
    comparison.add(side, description, tree);
    return allGood;
  });
}

// Prints a line for each value that was added (+) or removed (-), or is another (!). Returns differ when there is one,
// and wrongUsage, as diff(1) does, when a file does not load or one is of the other kind.
ExitStatus diffFiles(const Options& options) {
  Comparison comparison;
  Kind before = Kind::either;
  Kind after = Kind::either;
  const ExitStatus first = load(options.oldFile, Comparison::Side::before, comparison, before);
  const ExitStatus second = load(options.newFile, Comparison::Side::after, comparison, after);
  if (first != allGood || second != allGood) {
    return wrongUsage;
  }
  if (before != after && before != Kind::either && after != Kind::either) {
    report(options.newFile, after == Kind::project ? "is a project description, and the other file a manifest"
                                                   : "is a manifest, and the other file a project description");
    return wrongUsage;
  }
  return finishOutput(comparison.print() ? differ : allGood);
}

}  // namespace

void addDiff(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("diff", "Compare two manifests, or two project descriptions", "diff old.xml new.xml",
           [options]() -> ExitStatus {
             try {
               return runWithParser(options->output, {options->oldFile, options->newFile}, false,
                                    [&] { return diffFiles(*options); });
             } catch (const Failure& failure) {
               report(failure.subject, failure.what());
               return wrongUsage;
             }
           })
      .argument("OLD", options->oldFile, "The description before")
      .argument("NEW", options->newFile, "The description after")
      .output(options->output);
}

}  // namespace tool
