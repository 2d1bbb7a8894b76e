// The project tree as text on the standard error stream, for diagnosis.
#ifndef QZJEXXML_PROJECT_NOX_DUMP_H
#define QZJEXXML_PROJECT_NOX_DUMP_H

#include "project/nox_nodes.h"

namespace jexxml {

// Writes a line for each element of the tree, in a section for each kind of child of the root:
//
//   =================DEPENDENCY======================
//   #dependency:
//   ##directory: path=src
//   ###data: pathd=src/a.txt name=a.txt
//   =================================================
//   =================DEVELOPMENT=====================
//   #development: project=demo debug_log=build.log debug_level=1
//   ##rootmacro:
//   ###rmdata: name=ROOT1 abspath=/opt/demo
//   ##addpath:
//   ###apdata: path=/opt/demo/lib where=w1
//   ===============================================
//   =================SECURITY======================
//   #security:
//   ##exclude: message=msg1
//   ###secdata: path=src/private
//   ===============================================
//   =================DEPLOYMENT=====================
//   #deployment: application=demoapp debug_test=0
//   ##pathmap:
//   ###pmdata: front=/opt/demo replace_by=/usr/local/demo
//   ==================================================
//
// Returns true; for a null root false, with nothing written. REQUIRES: the document lives.
bool dumpNoxMaster(NoxMaster& master);

}  // namespace jexxml

#endif  // QZJEXXML_PROJECT_NOX_DUMP_H
