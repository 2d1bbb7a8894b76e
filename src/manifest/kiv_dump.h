// The manifest tree as text on the standard error stream, for diagnosis.
#ifndef QZJEXXML_MANIFEST_KIV_DUMP_H
#define QZJEXXML_MANIFEST_KIV_DUMP_H

#include "manifest/kiv_nodes.h"

namespace jexxml {

// Writes a line for each element of the tree, between two banners:
//
//   =======================KIV============================
//   #kiv: application=calc
//   ##rootmacro: no of data nodes=1
//   ###data: name=start abspath=/opt/calc/start
//   ##filemap:
//   ###root: path=lib
//   ####data: dir_name=lib file_name=util dir_rename=lib2 file_rename=
//   ##varnixpath:
//   ###data: path=/opt/calc/bin
//   =======================================================
//
// Returns true; for a null root false, with nothing written. REQUIRES: the document lives.
bool dumpKivMaster(KivMaster& master);

}  // namespace jexxml

#endif  // QZJEXXML_MANIFEST_KIV_DUMP_H
