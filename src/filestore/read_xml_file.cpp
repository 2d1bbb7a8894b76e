#include "filestore/whole_file.h"

#include <qzjexxml/qzjexxml.h>

bool ReadXmlFile(const char* fileName, KIVByteArray& out) {
  KIVByteArray content =
      jexxml::readWholeFile(fileName, {.noFileName = "Parameter Error!", .noContent = "Nothing to read!"});
  if (content.length == 0) {
    return false;
  }
  out = std::move(content);
  return true;
}

char* ReadXmlFile(const char* fileName) {
  KIVByteArray content;
  return ReadXmlFile(fileName, content) ? jexxml::toNulTerminatedText(content) : nullptr;
}
