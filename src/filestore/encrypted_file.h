// Encrypting files under a passphrase: what stands behind the exported functions.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <string>

namespace jexxml {

// The name beside `fileName` under which it is encrypted: the first ".xml" anywhere in the whole path
// becomes ".enc"; without one, ".enc" is appended.
std::string encryptedFileName(std::string fileName);

// As the exported EncryptFile, and leaves the encrypted bytes in `out`.
bool EncryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase);

// Writes `text` without its NUL to a file, whose content it replaces. Whether the bytes reached the
// disk is not checked. False after one of the messages:
//
//   "Parameter Error!"                  `fileName` or `text` is null or empty
//   "Could not open file: " + fileName
bool WriteXmlFile(const char* fileName, const char* text);

}  // namespace jexxml
