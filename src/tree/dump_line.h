// Writes the lines of the diagnostic dumps to the standard error stream.
#pragma once

#include "tree/node_attribute.h"

#include <initializer_list>
#include <string_view>

namespace jexxml {

struct DumpField {
  const char* label;
  NodeAttribute& attribute;
};

// A line is written as a line end followed by the text. So a dump begins with an empty line, and does not end with a
// line end.

void dumpLine(std::string_view text);

// A line of labels, each followed by the text of its attribute. Reads the texts before it writes anything, from the
// last to the first. So the report of an attribute that was never fetched is at the end of the previous line.
void dumpLine(std::initializer_list<DumpField> fields);

}  // namespace jexxml
