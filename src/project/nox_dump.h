// The project tree as text on the standard error stream, for diagnosis.
#pragma once

#include "project/nox_nodes.h"

namespace jexxml {

// Writes a line for each element below the root element, in a section between two banners for each kind of child of
// the root: a number sign for each level, the element's name, and its attributes, such as
//
//   ###data: pathd=src/a.txt name=a.txt
//
// The names of "data" elements elsewhere begin with their parents': "###rmdata".
//
// Returns true; for a null root false, with nothing written. REQUIRES: the document lives.
bool dumpNoxMaster(NoxMaster& master);

}  // namespace jexxml
