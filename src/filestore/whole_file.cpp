#include "filestore/whole_file.h"

#include <qzjexxml/kiv_file_reader.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace jexxml {
namespace {

// Opening a FIFO waits for a writer and opening a device may act on it, so neither is ever opened.
bool isOpenable(const char* fileName) {
  std::error_code error;
  const auto status = std::filesystem::status(fileName, error);
  return std::filesystem::is_regular_file(status) || !std::filesystem::exists(status);
}

}  // namespace

KIVByteArray readWholeFile(const char* fileName, const ReadMessages& messages) {
  if (fileName == nullptr || *fileName == '\0') {
    std::cerr << messages.noFileName << std::endl;
    return {};
  }
  KIVByteArray content;
  if (isOpenable(fileName)) {
    std::ifstream stream;
    stream.rdbuf()->pubsetbuf(nullptr, 0);  // the bytes may be secret: no second copy in a buffer
    stream.open(fileName, std::ios::in | std::ios::binary);
    if (!stream.is_open() || !stream.good()) {
      std::cerr << "Could not open file: " << fileName << std::endl;
      return {};
    }
    KIVFileReaderWithoutTransform reader(&stream);
    content = std::move(reader.readAll());
  }
  if (content.length == 0) {
    std::cerr << messages.noContent << std::endl;
  }
  return content;
}

char* toNulTerminatedText(const KIVByteArray& bytes) {
  char* text = new char[std::size_t{bytes.length} + 1];
  std::memcpy(text, bytes.data, bytes.length);
  text[bytes.length] = '\0';
  return text;
}

}  // namespace jexxml
