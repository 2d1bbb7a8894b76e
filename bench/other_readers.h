// Readers to compare the library with. They fill the file map of a record, without the library's checks and
// diagnostics.
#pragma once

#include <qzjexxml/kiv_data.h>

#include <xercesc/util/XercesDefs.hpp>

#include <string>

namespace bench {

// The attributes of one file.
struct FileAttributes {
  std::string dirName;
  std::string fileName;
  std::string dirRename;
  std::string fileRename;
};

// Converts `text` with Xerces-C. Empty if `text` is null.
std::string copyOf(const XMLCh* text);

// Composes the entry of a file as a load does, and adds it to the record.
void addFile(KIVData& record, const std::string& rootPath, const FileAttributes& file);

void readWithLibxml2(const std::string& path);
void readWithPugixml(const std::string& path);

// With SAX2 events of Xerces-C, without a document.
void readWithXercesSax(const std::string& path);

}  // namespace bench
