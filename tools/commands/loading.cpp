#include "commands/loading.h"

#include "commands/each_file.h"
#include "commands/run_with_parser.h"
#include "description/description_json.h"
#include "io/failure.h"
#include "io/input_file.h"
#include "io/terminal_text.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace tool {
namespace {

void printJsonErrors(const std::string& file, std::vector<Finding> errors) {
  std::erase_if(errors, [](const Finding& finding) { return !isError(finding.rule); });
  if (errors.empty()) {  // whatever kept it from loading is not the parser's to say
    errors.push_back({{}, Rule::notLoadable, "cannot be loaded"});
  }
  JsonWriter json;
  json.beginFile(file).key("errors");
  write(json, errors);
  json.endFile();
}

ExitStatus printEach(const LoadOptions& options, LoadCommand* print) {
  return forEachFile(options.files, [&](const std::string& file) {
    try {
      const InputFile input(file);
      const ExitStatus outcome = print(options, file, input.path(),
                                       options.files.size() > 1 ? escapeForTerminal(file) + ":\n" : std::string());
      if (outcome != allGood && options.json) {
        printJsonErrors(file, Description(input.path()).findings);
      }
      return outcome;
    } catch (const Failure& failure) {
      if (options.json) {
        printJsonErrors(file, {{{}, Rule::unreadable, failure.what()}});
      }
      throw;
    }
  });
}

}  // namespace

void addLoadCommand(CommandLine& line, const char* name, const char* text, const char* example, LoadCommand* print) {
  const auto options = std::make_shared<LoadOptions>();
  line.add(name, text, example,
           [options, print] {
             return runWithParser(options->output, options->files, options->json,
                                  [&] { return printEach(*options, print); });
           })
      .files(options->files)
      .output(options->output)
      .flag("--json", options->json, "Print one JSON object for each file, on a line")
      .flag("--tree", options->tree, "Print the tree of elements")
      .excludes("--json", "--tree");
}

ExitStatus outcomeOf(const std::string& file, const std::string& diagnostics) {
  return diagnostics.empty() ? allGood : report(file, "cannot be loaded", diagnostics);
}

bool isEmpty(const KIVData& record) {
  return record.rootMacros.empty() && record.fileMap.empty() && record.varnixPath.empty();
}

ExitStatus loadRecord(const std::string& file, const char* path, Record& record) {
  return outcomeOf(file, diagnosticsOf([&] {
                     KIVData* handle = nullptr;
                     InitKIVData(path, &handle);
                     record.reset(handle);
                   }));
}

void printTree(const std::string& heading, const std::function<void()>& dump) {
  std::cout << heading << diagnosticsOf(dump).substr(1) << '\n';
}

void warnOfOtherKind(const std::string& file, const Description& description, bool asManifest) {
  if (description.showsKind && description.isManifest() != asManifest) {
    report(file, asManifest ? "warning: this is a project description, which gives no entries"
                            : "warning: this is an archive manifest, of which nothing is checked");
  } else if (!description.showsKind && std::ranges::count(description.findings, Rule::unknownElement, &Finding::rule)) {
    report(file, "warning: this is neither an archive manifest nor a project description");
  }
}

}  // namespace tool
