// Writes the project tree as text to the standard error stream, for diagnosis.
#pragma once

#include "project/nox_nodes.h"

namespace jexxml {

// Writes one line for each element below the root element. Each kind of child of the root has a section between two
// banners. A line has a number sign for each level, the name of the element, and its attributes, for example:
//
//   ###data: pathd=src/a.txt name=a.txt
//
// Elements named "data" outside a "directory" have a prefix for their parent, such as "###rmdata".
//
// Returns true. Returns false and writes nothing if the root is null. REQUIRES: the document still exists.
bool dumpNoxMaster(NoxMaster& master);

}  // namespace jexxml
