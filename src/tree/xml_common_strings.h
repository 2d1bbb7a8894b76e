// XmlCommonStrings: the element and attribute names of both vocabularies as parser strings.
#pragma once

#include <nuvo.h>

#include <xercesc/util/XercesDefs.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

namespace jexxml {

// A fuzzer's dictionary is made of them (script/fuzz). clang-format would align all names to a longer new one.
// clang-format off
inline constexpr std::array xmlNames = {
    "doc_root",   "kiv",         "rootmacro",  "varnixpath",  "filemap",     "root",     "data",
    "type",       "version",     "date",       "name",        "application", "abspath",  "path",
    "dir_name",   "file_name",   "dir_rename", "file_rename", "dependency",  "security", "development",
    "deployment", "directory",   "addpath",    "exclude",     "pathmap",     "pathd",    "project",
    "debug_log",  "debug_level", "where",      "message",     "debug_test",  "front",    "replace_by",
};
// clang-format on

// A name's place in the table. Made from the name while compiling: one that is not in the table does
// not compile.
struct XmlName {
  consteval XmlName(const char* name) {
    while (std::string_view(xmlNames.at(index)) != name) {
      ++index;
    }
  }

  std::size_t index = 0;
};

// Made for one build, released at its end; nothing may keep an entry longer. Not copyable.
class XmlCommonStrings {
 public:
  // Converts all names; one that cannot be converted has a null entry.
  XmlCommonStrings();
  XmlCommonStrings(const XmlCommonStrings&) = delete;
  XmlCommonStrings& operator=(const XmlCommonStrings&) = delete;

  // The parser string for a name: get("dir_name").
  const XMLCh* get(XmlName name) const { return strings[name.index].get(); }

 private:
  struct Release {
    void operator()(XMLCh* string) const { nuvoFree(string); }
  };

  std::array<std::unique_ptr<XMLCh, Release>, xmlNames.size()> strings;
};

}  // namespace jexxml
