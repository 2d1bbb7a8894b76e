// XmlCommonStrings: the element and attribute names of both vocabularies as Xerces-C strings.
#pragma once

#include <nuvo.h>

#include <xercesc/util/XercesDefs.hpp>

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>

namespace jexxml {

// script/fuzz copies these names. clang-format would realign all of them for a longer name.
// clang-format off
inline constexpr std::array xmlNames = {
    "doc_root",   "kiv",         "rootmacro",  "varnixpath",  "filemap",     "root",     "data",
    "type",       "version",     "date",       "name",        "application", "abspath",  "path",
    "dir_name",   "file_name",   "dir_rename", "file_rename", "dependency",  "security", "development",
    "deployment", "directory",   "addpath",    "exclude",     "pathmap",     "pathd",    "project",
    "debug_log",  "debug_level", "where",      "message",     "debug_test",  "front",    "replace_by",
};
// clang-format on

// The index of a name in the table, computed at compile time. A name that is not in the table does not compile.
struct XmlName {
  consteval XmlName(const char* name) {
    while (std::string_view(xmlNames.at(index)) != name) {
      ++index;
    }
  }

  std::size_t index = 0;
};

// Exists for one build. Its strings must not be used afterwards. Not copyable.
class XmlCommonStrings {
 public:
  // Converts all names. A name that cannot be converted has a null entry.
  XmlCommonStrings();
  XmlCommonStrings(const XmlCommonStrings&) = delete;
  XmlCommonStrings& operator=(const XmlCommonStrings&) = delete;

  // The Xerces-C string for a name: get("dir_name").
  const XMLCh* get(XmlName name) const { return strings[name.index].get(); }

 private:
  struct Release {
    void operator()(XMLCh* string) const { nuvoFree(string); }
  };

  std::array<std::unique_ptr<XMLCh, Release>, xmlNames.size()> strings;
};

}  // namespace jexxml
