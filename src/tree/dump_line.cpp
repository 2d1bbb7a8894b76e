#include "tree/dump_line.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace jexxml {

void dumpLine(std::string_view text) { std::cerr << std::endl << text; }

void dumpLine(std::initializer_list<DumpField> fields) {
  std::for_each(std::rbegin(fields), std::rend(fields), [](const DumpField& field) { field.attribute.getText(); });
  dumpLine("");
  for (const DumpField& field : fields) {
    std::cerr << field.label << field.attribute.cachedText();
  }
}

}  // namespace jexxml
