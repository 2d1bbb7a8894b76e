// The commands that load description files.
#ifndef QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H
#define QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H

#include "outcome.h"

#include <qzjexxml/qzjexxml.h>

#include <memory>
#include <string>
#include <vector>

namespace tool {

enum class Format { table, json, tree };

struct Release {
  void operator()(KIVData* record) const { TermKIVData(&record); }
};
using Record = std::unique_ptr<KIVData, Release>;

// Loads the manifest at `path`; a failure is reported under the name `file`.
ExitStatus loadRecord(const std::string& file, const char* path, Record& record);

// Prints each file's record; files that do not load are reported, and the others still done.
ExitStatus showManifests(const std::vector<std::string>& files, Format format);

// Checks each file; prints its tree as `format` says, or nothing for Format::table.
ExitStatus showProjects(const std::vector<std::string>& files, Format format);

}  // namespace tool

#endif  // QZJEXXML_TOOLS_DESCRIPTION_COMMANDS_H
