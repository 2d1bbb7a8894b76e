// qzjexxml manifest: prints what a load of archive manifests gives.
#include "commands/commands.h"
#include "commands/describing.h"
#include "commands/loading.h"
#include "description/json_text.h"
#include "io/terminal_text.h"
#include "manifest/kiv_dump.h"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool {
namespace {

using Row = std::pair<std::string, std::string>;

// The right side in one column, but not further right than a screen is wide.
void printRows(std::string_view title, std::string_view separator, const std::vector<Row>& rows) {
  constexpr std::size_t widest = 80;
  std::size_t width = 0;
  for (const auto& [left, right] : rows) {
    const std::size_t columns = columnsOf(left);
    width = columns > widest ? width : std::max(width, columns);
  }
  std::cout << title << '\n';
  for (const auto& [left, right] : rows) {
    std::cout << "  " << left << std::string(width - std::min(width, columnsOf(left)), ' ') << separator << right
              << '\n';
  }
}

void printTable(const KIVData& record) {
  std::vector<Row> macros;
  for (const auto& [name, path] : record.rootMacros) {
    macros.emplace_back(shown(name), shown(path));
  }
  printRows("root macros", " = ", macros);
  std::vector<Row> files;
  for (const auto& [source, entry] : record.fileMap) {
    files.emplace_back(shown(source), shown(entry.target));
  }
  printRows("file map", " -> ", files);
  std::cout << "search path\n";
  for (const std::string& path : record.varnixPath) {
    std::cout << "  " << shown(path) << '\n';
  }
}

void printJson(const std::string& file, const KIVData& record) {
  std::cout << '{' << jsonOfFile(file) << ",\"rootMacros\":";
  printObject(record.rootMacros, [](const std::string& path) { return path; });
  std::cout << ",\"fileMap\":";
  printObject(record.fileMap, [](const FileMapEntry& entry) { return entry.target; });
  std::cout << ",\"varnixPath\":" << json(record.varnixPath) << "}\n";
}

ExitStatus printManifest(const LoadOptions& options, const std::string& file, const char* path,
                         const std::string& heading) {
  if (options.tree) {
    return loadTree<jexxml::KivMaster>(file, path, jexxml::buildKivMaster, [&](jexxml::KivMaster& tree) {
      printTree(heading, [&] { dumpKivMaster(tree); });
    });
  }
  Record record;
  const ExitStatus outcome = loadRecord(file, path, record);
  if (outcome != allGood) {
    return outcome;
  }
  if (isEmpty(*record)) {
    warnOfOtherKind(file, Description(path), true);
  }
  if (options.json) {
    printJson(file, *record);
  } else {
    std::cout << heading;
    printTable(*record);
  }
  return outcome;
}

}  // namespace

void addManifest(CommandLine& line) {
  const auto options = std::make_shared<LoadOptions>();
  options->addTo(line.add("manifest", "Print archive manifests", [options] {
    return describe(options->output, options->files, options->json, [&] {
      return forEachDescription(*options, [&](const std::string& file, const char* path, const std::string& heading) {
        return printManifest(*options, file, path, heading);
      });
    });
  }));
}

}  // namespace tool
