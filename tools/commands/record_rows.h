// The rows of a manifest's record: the table, --json and diff print these, and nothing else of it.
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
  const char* separator;  // between key and value; null where there are only keys, in an order that counts
  void (*forEach)(const KIVData& record, const RowAction& action);
};

extern const std::array<Section, 3> sections;

}  // namespace tool
