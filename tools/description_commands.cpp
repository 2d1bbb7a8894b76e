#include "description_commands.h"

#include "input_file.h"
#include "interface/document_load.h"
#include "json_text.h"
#include "manifest/kiv_dump.h"
#include "project/nox_dump.h"

#include <algorithm>
#include <cwchar>
#include <iostream>
#include <string_view>
#include <utility>

namespace tool {
namespace {

// A load that writes anything has failed.
ExitStatus outcomeOf(const std::string& file, const std::string& diagnostics) {
  return diagnostics.empty() ? allGood : report(file, "cannot be loaded", diagnostics);
}

// How many columns of a terminal the text takes; where the locale does not know, a UTF-8 character takes one.
std::size_t columnsOf(const std::string& text) {
  std::wstring wide(text.size(), L'\0');
  const std::size_t length = mbstowcs(wide.data(), text.c_str(), wide.size());
  const int columns = length == static_cast<std::size_t>(-1) ? -1 : wcswidth(wide.c_str(), length);
  if (columns >= 0) {
    return static_cast<std::size_t>(columns);
  }
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80;  // not a continuation byte
  }));
}

using Row = std::pair<std::string, std::string>;

void printRows(std::string_view title, std::string_view separator, const std::vector<Row>& rows) {
  std::size_t width = 0;
  for (const auto& [left, right] : rows) {
    width = std::max(width, columnsOf(left));
  }
  std::cout << title << '\n';
  for (const auto& [left, right] : rows) {
    std::cout << "  " << left << std::string(width - columnsOf(left), ' ') << separator << right << '\n';
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

void printJsonErrors(const std::string& file, std::vector<Finding> errors) {
  std::erase_if(errors, [](const Finding& finding) { return !finding.isError; });
  if (errors.empty()) {  // whatever kept it from loading is not the parser's to say
    errors.push_back({.place = {}, .isError = true, .text = "cannot be loaded"});
  }
  std::cout << '{' << jsonOfFile(file) << ",\"errors\":" << json(errors) << "}\n";
}

// In JSON, what keeps a file from loading stands in an object of its own.
ExitStatus forEachDescription(const std::vector<std::string>& files, Format format, const auto& command) {
  return forEachFile(files, [&](const std::string& file) {
    try {
      const InputFile input(file);
      const ExitStatus outcome = command(file, input.path());
      if (outcome != allGood && format == Format::json) {
        printJsonErrors(file, readDescription(input.path()).findings);
      }
      return outcome;
    } catch (const Failure& failure) {
      if (format == Format::json) {
        printJsonErrors(file, {{.place = {}, .isError = true, .text = failure.what()}});
      }
      throw;
    }
  });
}

// A description of the other kind loads, without an entry.
void warnOfOtherKind(const std::string& file, const Description& description, bool asManifest) {
  if (description.showsKind && description.isManifest() != asManifest) {
    report(file, asManifest ? "warning: this is a project description, which gives no entries"
                            : "warning: this is an archive manifest, of which nothing is checked");
  }
}

// The dump begins with a line end and does not end its last line.
void printTree(const std::function<void()>& dump) { std::cout << diagnosticsOf(dump).substr(1) << '\n'; }

template <typename Tree>
ExitStatus showTree(const std::string& file, const char* path, const std::string& heading, bool print,
                    bool (*build)(Tree&), bool (*dump)(Tree&)) {
  std::unique_ptr<jexxml::DocumentLoad> load;
  Tree tree;
  const ExitStatus outcome = outcomeOf(file, diagnosticsOf([&] {
                                         load = std::make_unique<jexxml::DocumentLoad>(path);
                                         tree.document = load->document();
                                         build(tree);
                                       }));
  if (outcome == allGood && print) {
    std::cout << heading;
    printTree([&] { dump(tree); });
  }
  return outcome;
}

ExitStatus showRecord(const std::string& file, const char* path, const std::string& heading, Format format) {
  Record record;
  const ExitStatus outcome = loadRecord(file, path, record);
  if (outcome != allGood) {
    return outcome;
  }
  if (record->rootMacros.empty() && record->fileMap.empty() && record->varnixPath.empty()) {
    warnOfOtherKind(file, readDescription(path), true);
  }
  if (format == Format::json) {
    printJson(file, *record);
  } else {
    std::cout << heading;
    printTable(*record);
  }
  return outcome;
}

// What stands before a file's text: its name, where there are several files.
std::string headingOf(const std::string& file, const std::vector<std::string>& files) {
  return files.size() > 1 ? shown(file) + ":\n" : "";
}

}  // namespace

ExitStatus loadRecord(const std::string& file, const char* path, Record& record) {
  return outcomeOf(file, diagnosticsOf([&] {
                     KIVData* handle = nullptr;
                     InitKIVData(path, &handle);
                     record.reset(handle);
                   }));
}

ExitStatus showManifests(const std::vector<std::string>& files, Format format) {
  return forEachDescription(files, format, [&](const std::string& file, const char* path) {
    const std::string heading = headingOf(file, files);
    return format == Format::tree ? showTree(file, path, heading, true, jexxml::buildKivMaster, jexxml::dumpKivMaster)
                                  : showRecord(file, path, heading, format);
  });
}

ExitStatus showProjects(const std::vector<std::string>& files, Format format) {
  return forEachDescription(files, format, [&](const std::string& file, const char* path) {
    const ExitStatus outcome = showTree(file, path, headingOf(file, files), format == Format::tree,
                                        jexxml::buildNoxMaster, jexxml::dumpNoxMaster);
    if (outcome == allGood) {
      const Description description = readDescription(path);
      warnOfOtherKind(file, description, false);
      if (format == Format::json) {
        std::cout << '{' << jsonOfFile(file) << ",\"project\":";
        printJson(description);
        std::cout << "}\n";
      }
    }
    return outcome;
  });
}

}  // namespace tool
