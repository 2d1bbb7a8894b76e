// The record of a manifest's file map, filled by readers without the library's checks and diagnostics, for comparison.
#pragma once

#include <qzjexxml/kiv_data.h>

#include <xercesc/util/XercesDefs.hpp>

#include <string>

namespace bench {

// One file of the map as its attributes have it.
struct FileAttributes {
  std::string dirName;
  std::string fileName;
  std::string dirRename;
  std::string fileRename;
};

// Converted by Xerces-C; empty for a null text.
std::string copyOf(const XMLCh* text);

// Composes and adds it as a load does.
void addFile(KIVData& record, const std::string& rootPath, const FileAttributes& file);

void readWithLibxml2(const std::string& path);
void readWithPugixml(const std::string& path);

// Xerces-C's SAX2 events, without a document.
void readWithXercesSax(const std::string& path);

}  // namespace bench
