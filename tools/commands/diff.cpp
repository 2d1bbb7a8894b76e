// qzjexxml diff: what differs between two manifests, or two project descriptions.
#include "commands/command_line.h"
#include "commands/commands.h"
#include "commands/comparison.h"
#include "commands/describing.h"
#include "commands/each_file.h"
#include "commands/loading.h"
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

// One of the two files, loaded.
struct Loaded {
  explicit Loaded(const std::string& file) : input(file) {}

  InputFile input;
  Record record;
  Kind kind = Kind::either;
};

ExitStatus load(const std::string& file, std::unique_ptr<Loaded>& loaded) {
  return forEachFile({file}, [&](const std::string&) {
    loaded = std::make_unique<Loaded>(file);
    const ExitStatus outcome = loadRecord(file, loaded->input.path(), loaded->record);
    if (outcome != allGood) {
      return outcome;
    }
    if (!isEmpty(*loaded->record)) {
      loaded->kind = Kind::manifest;
      return allGood;
    }
    const Description description(loaded->input.path());
    if (description.showsKind) {
      loaded->kind = description.isManifest() ? Kind::manifest : Kind::project;
    }
    return allGood;
  });
}

// Prints a line for each value that was added (+) or removed (-), or is another (!). Returns differ when there is one,
// and wrongUsage, as diff(1) does, when a file does not load or one is of the other kind.
ExitStatus diffFiles(const Options& options) {
  std::unique_ptr<Loaded> before;
  std::unique_ptr<Loaded> after;
  const ExitStatus first = load(options.oldFile, before);
  const ExitStatus second = load(options.newFile, after);
  if (first != allGood || second != allGood) {
    return wrongUsage;
  }
  if (before->kind != after->kind && before->kind != Kind::either && after->kind != Kind::either) {
    report(options.newFile, after->kind == Kind::project ? "is a project description, and the other file a manifest"
                                                         : "is a manifest, and the other file a project description");
    return wrongUsage;
  }
  const bool areProjects = before->kind == Kind::project || after->kind == Kind::project;
  Comparison comparison;
  for (const auto* side : {before.get(), after.get()}) {
    if (areProjects) {
      comparison.add(Description(side->input.path()));
    } else {
      comparison.add(*side->record);
    }
  }
  return finishOutput(comparison.print() ? differ : allGood);
}

}  // namespace

void addDiff(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("diff", "Compare two manifests, or two project descriptions",
           [options]() -> ExitStatus {
             try {
               return describe(options->output, {options->oldFile, options->newFile}, false,
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
