// Lines of the diagnostic dumps, on the standard error stream.
#pragma once

#include "tree/node_attribute.h"

#include <initializer_list>
#include <string_view>

namespace jexxml {

struct DumpField {
  const char* label;
  NodeAttribute& attribute;
};

// Each line is written as a line end and then its text, so that a dump begins with an empty line and
// does not end its last one.

void dumpLine(std::string_view text);

// A line of labels, each with the text of its attribute. The texts are read before anything is written, from the last
// to the first, so that the report of an attribute that was never fetched continues the line before.
void dumpLine(std::initializer_list<DumpField> fields);

}  // namespace jexxml
