// qzjexxml manifest: prints the records of archive manifests.
#include "commands/loading.h"
#include "commands/record_rows.h"
#include "manifest/kiv_dump.h"
#include "manifest/populate_kiv_data.h"

#include <algorithm>

namespace tool {

// Aligns the values, except those of keys that are wider than a screen.
static void printTable(const KIVData& record) {
  constexpr std::size_t widest = 80;
  for (const Section& section : sections) {
    std::size_t width = 0;
    section.forEach(record, [&](const std::string& key, const std::string&) {
      const std::size_t columns = section.separator == nullptr ? 0 : displayWidth(key, widest);
      width = columns > widest ? width : std::max(width, columns);
    });
    std::cout << section.title << '\n';
    section.forEach(record, [&](const std::string& key, const std::string& value) {
      std::cout << "  " << escapeForTerminal(key);
      if (section.separator != nullptr) {
        std::cout << std::string(width - std::min(width, displayWidth(key, widest)), ' ') << section.separator
                  << escapeForTerminal(value);
      }
      std::cout << '\n';
    });
  }
}

static void printJson(const std::string& file, const KIVData& record) {
  JsonWriter json(file);
  for (const Section& section : sections) {
    json.key(section.member);
    const bool isList = section.separator == nullptr;
    isList ? json.beginArray() : json.beginObject();
    section.forEach(record, [&](const std::string& key, const std::string& value) {
      isList ? json.text(key) : json.key(key).text(value);
    });
    json.end();
  }
}

static void print(const Options& options, const Description& description, jexxml::KivMaster& tree) {
  KIVData record;
  populateKivData(tree, record);
  if (record.rootMacros.empty() && record.fileMap.empty() && record.varnixPath.empty()) {
    warnOfOtherKind(description, true);
  }
  options.json ? printJson(description.file, record) : printTable(record);
}

static ExitStatus manifest(const Options& options) {
  return printEach<jexxml::KivMaster>(options, jexxml::dumpKivMaster, print);
}

void addManifest(CommandLine& line) {
  addLoadOptions(line.add("manifest", "Print archive manifests", "manifest --json manifest.xml", withParser<manifest>));
}

}  // namespace tool
