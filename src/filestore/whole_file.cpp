#include "filestore/whole_file.h"

#include <qzjexxml/kiv_file_reader.h>

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

namespace jexxml {
namespace {

enum class Kind { toRead, special, notOpenable };

// Opening a FIFO waits for a writer and opening a device may act on it, so no special file is ever opened.
Kind kindOf(const char* fileName) {
  std::error_code error;
  const auto status = std::filesystem::status(fileName, error);
  if (std::filesystem::is_regular_file(status) || !std::filesystem::exists(status)) {
    return Kind::toRead;
  }
  return std::filesystem::is_socket(status) || access(fileName, R_OK) != 0 ? Kind::notOpenable : Kind::special;
}

}  // namespace

KIVByteArray readWholeFile(const char* fileName, const ReadMessages& messages) {
  if (fileName == nullptr || *fileName == '\0') {
    std::cerr << messages.noFileName << std::endl;
    return {};
  }
  const Kind kind = kindOf(fileName);
  std::ifstream stream;
  if (kind == Kind::toRead) {
    stream.rdbuf()->pubsetbuf(nullptr, 0);  // the bytes may be secret: no second copy in a buffer
    stream.open(fileName, std::ios::in | std::ios::binary);
  }
  if (kind == Kind::notOpenable || !stream) {
    std::cerr << "Could not open file: " << fileName << std::endl;
    return {};
  }
  KIVFileReaderWithoutTransform reader(&stream);
  KIVByteArray content = std::move(reader.readAll());
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
