// What is said of a description, as JSON.
#pragma once

#include "description/description.h"
#include "io/json_writer.h"

#include <vector>

namespace tool {

// [{"severity":"error","rule":"not-valid","line":2,"column":1,"message":"..."}, ...], without the position where there
// is none.
void write(JsonWriter& json, const std::vector<Finding>& findings);

// The tree of the elements that a load takes: {"element":"data","attributes":{...},"children":[...]}.
void write(JsonWriter& json, const Description& description);

}  // namespace tool
