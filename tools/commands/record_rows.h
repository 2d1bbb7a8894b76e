// The rows of a manifest's record, which the table, --json and diff print.
#pragma once

#include <qzjexxml/kiv_data.h>

#include <array>
#include <functional>
#include <string>

namespace tool {

using RowAction = std::function<void(const std::string& key, const std::string& value)>;

struct Section {
  const char* title;      // in the table
  const char* member;     // of the JSON object
  const char* row;        // names a row in diff
  const char* separator;  // between key and value; null if the keys have no values and their order counts
  void (*forEach)(const KIVData& record, const RowAction& action);
};

extern const std::array<Section, 3> sections;

}  // namespace tool
