// qzjexxml check: what keeps descriptions from loading, and what a load would silently ignore or override.
#include "command_line.h"
#include "commands.h"
#include "describing.h"
#include "description_reader.h"
#include "each_file.h"
#include "entries.h"
#include "failure.h"
#include "input_file.h"
#include "json_text.h"
#include "library_diagnostics.h"
#include "terminal_text.h"

#include <qzjexxml/qzjexxml.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace tool {
namespace {

// A target without a folder reads "/FILE" in the record, which is no absolute path that somebody wrote.
void checkTarget(const Entry& entry, Description& description) {
  if (entry.value.starts_with("//") ||
      (entry.value.starts_with('/') && entry.value.find('/', 1) != std::string::npos) ||
      ("/" + entry.value + "/").find("/../") != std::string::npos) {
    description.find(entry.element->place, false,
                     "target " + inQuotes(entry.value) + " may lead out of where it is restored");
  }
}

// Entries that override each other, and paths that lead elsewhere.
void checkEntries(const std::string& file, Description& description) {
  const std::vector<Entry> entries = entriesOf(description);
  std::map<std::string, const Entry*> macros;
  std::map<std::string, const Entry*> sources;
  std::map<std::string, const Entry*> targets;
  for (const Entry& entry : entries) {
    const Place& place = entry.element->place;
    const Entry*& before = (entry.isFile ? sources : macros)[entry.key];
    if (before != nullptr && !entry.key.empty()) {
      description.find(place, false,
                       (entry.isFile ? "source " : "root macro ") + inQuotes(entry.key) + " overrides the one at " +
                           placeOf(file, before->element->place));
    }
    before = &entry;
    if (!entry.isFile) {
      if (!entry.value.empty() && !entry.value.starts_with('/')) {
        description.find(place, false, "abspath " + inQuotes(entry.value) + " is not absolute");
      }
      continue;
    }
    const Entry*& other = targets[entry.value];
    if (other != nullptr && other->key != entry.key) {
      description.find(place, false,
                       "target " + inQuotes(entry.value) + " is that of " + inQuotes(other->key) + " too, at " +
                           placeOf(file, other->element->place));
    }
    other = &entry;
    checkTarget(entry, description);
  }
}

void checkType(Description& description) {
  const Element& root = description.elements.front();
  if (root["type"] == (description.isManifest() ? "project" : "archive")) {
    description.find(root.place, false,
                     std::string("its type is ") + inQuotes(root["type"]) + ", but the content is that of " +
                         (description.isManifest() ? "an archive manifest" : "a project description"));
  }
}

// Whatever else a load may say.
void checkLoad(const char* path, Description& description) {
  const std::string diagnostics = diagnosticsOf([&] {
    if (description.isManifest()) {
      KIVData* record = nullptr;
      InitKIVData(path, &record);
      TermKIVData(&record);
    } else {
      void* handle = nullptr;
      InitNOXData(path, &handle);
    }
  });
  if (!diagnostics.empty()) {
    description.find({}, true, diagnostics.substr(0, diagnostics.find('\n')));
  }
}

// With its findings in the order of their places.
Description checked(const std::string& file) {
  Description description;
  try {
    const InputFile input(file);
    description = readDescription(input.path());
    if (std::ranges::none_of(description.findings, &Finding::isError)) {
      checkType(description);
      checkEntries(file, description);
      checkLoad(input.path(), description);
    }
  } catch (const Failure& failure) {
    description.find({}, true, failure.what());
  }
  std::ranges::stable_sort(description.findings, {},
                           [](const Finding& finding) { return std::tuple(finding.place.line, finding.place.column); });
  return description;
}

// Prints for each finding of each file a line "FILE:LINE:COLUMN: error: TEXT" or "... warning: TEXT", or for each file
// one JSON object on a line. fileFailed when there is a finding.
ExitStatus checkFiles(const std::vector<std::string>& files, bool asJson) {
  return forEachFile(files, [&](const std::string& file) {
    const Description description = checked(file);
    if (asJson) {
      std::cout << '{' << jsonOfFile(file) << R"(,"kind":)" << json(description.isManifest() ? "manifest" : "project")
                << ",\"findings\":" << json(description.findings) << "}\n";
    } else {
      for (const auto& [place, isError, text] : description.findings) {
        std::cout << shown(placeOf(file, place) + (isError ? ": error: " : ": warning: ") + text) << '\n';
      }
    }
    return description.findings.empty() ? allGood : fileFailed;
  });
}

struct Options {
  std::vector<std::string> files;
  std::string output;
  bool json = false;
};

}  // namespace

void addCheck(CommandLine& line) {
  const auto options = std::make_shared<Options>();
  line.add("check", "Say what is wrong with descriptions, and what a load would ignore",
           [options] {
             return describe(options->output, options->files, options->json,
                             [&] { return checkFiles(options->files, options->json); });
           })
      .files(options->files)
      .output(options->output)
      .flag("--json", options->json, "Print one JSON object for each file, on a line");
}

}  // namespace tool
