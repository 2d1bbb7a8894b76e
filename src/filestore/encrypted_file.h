// Encrypts files with a passphrase, for the exported functions.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <string>

namespace jexxml {

// The name of the encrypted file: `fileName` with the first ".xml" anywhere in the path replaced by ".enc", or with
// ".enc" appended if there is no ".xml".
std::string encryptedFileName(std::string fileName);

// Does what the exported EncryptFile does, and stores the encrypted bytes in `out`.
bool EncryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase);

// Writes `text` without its NUL to a file and replaces its content. Errors during the write are not detected. Returns
// false after one of these messages:
//
//   "Parameter Error!"                  `fileName` or `text` is null or empty
//   "Could not open file: " + fileName
bool WriteXmlFile(const char* fileName, const char* text);

}  // namespace jexxml
