#include "description_commands.h"

#include "interface/document_load.h"
#include "manifest/kiv_dump.h"
#include "project/nox_dump.h"

#include <qzjexxml/qzjexxml.h>

#include <nlohmann/json.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <string_view>

namespace tool {
namespace {

struct Release {
  void operator()(KIVData* record) const { TermKIVData(&record); }
};
using Record = std::unique_ptr<KIVData, Release>;

// Keeps the parser library started over many loads, which takes longer than a small file. Where it does not start, the
// loads say so.
class ParserLibrary {
 public:
  ParserLibrary() {
    try {
      xercesc::XMLPlatformUtils::Initialize();
      started = true;
    } catch (const xercesc::OutOfMemoryException&) {  // which is no std::exception
      throw std::bad_alloc();
    } catch (const xercesc::XMLException&) {
    }
  }
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;
  ~ParserLibrary() {
    if (started) {
      xercesc::XMLPlatformUtils::Terminate();
    }
  }

 private:
  bool started = false;
};

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
  printRows("root macros", " = ", {record.rootMacros.begin(), record.rootMacros.end()});
  std::vector<Row> files;
  for (const auto& [source, entry] : record.fileMap) {
    files.emplace_back(source, entry.target);
  }
  printRows("file map", " -> ", files);
  std::cout << "search path\n";
  for (const std::string& path : record.varnixPath) {
    std::cout << "  " << path << '\n';
  }
}

void printJson(const std::string& file, const KIVData& record) {
  nlohmann::ordered_json json = {{"file", file},
                                 {"rootMacros", nlohmann::json::object()},
                                 {"fileMap", nlohmann::json::object()},
                                 {"varnixPath", record.varnixPath}};
  json["rootMacros"].update(nlohmann::json(record.rootMacros));
  for (const auto& [source, entry] : record.fileMap) {
    json["fileMap"][source] = entry.target;
  }
  // A file's name need not be UTF-8, which JSON has to be.
  std::cout << json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

// The dump begins with a line end and does not end its last line.
void printTree(const std::function<void()>& dump) { std::cout << diagnosticsOf(dump).substr(1) << '\n'; }

template <typename Tree>
ExitStatus showTree(const std::string& file, const std::string& heading, bool (*build)(Tree&), bool (*dump)(Tree&)) {
  std::unique_ptr<jexxml::DocumentLoad> load;
  Tree tree;
  const ExitStatus outcome = outcomeOf(file, diagnosticsOf([&] {
                                         load = std::make_unique<jexxml::DocumentLoad>(file.c_str());
                                         tree.document = load->document();
                                         build(tree);
                                       }));
  if (outcome == allGood) {
    std::cout << heading;
    printTree([&] { dump(tree); });
  }
  return outcome;
}

ExitStatus showRecord(const std::string& file, const std::string& heading, Format format) {
  Record record;
  const ExitStatus outcome = outcomeOf(file, diagnosticsOf([&] {
                                         KIVData* handle = nullptr;
                                         InitKIVData(file.c_str(), &handle);
                                         record.reset(handle);
                                       }));
  if (outcome == allGood) {
    if (format == Format::json) {
      printJson(file, *record);
    } else {
      std::cout << heading;
      printTable(*record);
    }
  }
  return outcome;
}

// What stands before a file's text: its name, where there are several files.
std::string headingOf(const std::string& file, const std::vector<std::string>& files) {
  return files.size() > 1 ? file + ":\n" : "";
}

}  // namespace

ExitStatus showManifests(const std::vector<std::string>& files, Format format) {
  const ParserLibrary started;
  // JSON is UTF-8, which the library gives in the "C" locale.
  if (format != Format::json) {
    std::setlocale(LC_CTYPE, "");
  }
  return forEachFile(files, [&](const std::string& file) {
    const std::string heading = headingOf(file, files);
    return format == Format::tree ? showTree(file, heading, jexxml::buildKivMaster, jexxml::dumpKivMaster)
                                  : showRecord(file, heading, format);
  });
}

ExitStatus checkProjects(const std::vector<std::string>& files, bool tree) {
  const ParserLibrary started;
  std::setlocale(LC_CTYPE, "");
  return forEachFile(files, [&](const std::string& file) {
    return tree ? showTree(file, headingOf(file, files), jexxml::buildNoxMaster, jexxml::dumpNoxMaster)
                : outcomeOf(file, diagnosticsOf([&] {
                              void* handle = nullptr;
                              InitNOXData(file.c_str(), &handle);
                            }));
  });
}

}  // namespace tool
