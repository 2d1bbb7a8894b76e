#include "filestore/encrypted_file.h"

#include "filestore/secret_byte_array.h"
#include "filestore/whole_file.h"

#include <kivbtcrypto.h>
#include <qzjexxml/qzjexxml.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>

namespace jexxml {

constexpr ReadMessages readMessages = {.noFileName = "File name is null or empty!",
                                       .noContent = "Could not read file!"};

static bool writeWholeFile(const std::string& fileName, std::string_view content) {
  std::ofstream stream(fileName, std::ios::out | std::ios::binary | std::ios::trunc);
  if (!stream) {
    std::cerr << "Could not open file: " << fileName << std::endl;
    return false;
  }
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  return true;
}

std::string encryptedFileName(std::string fileName) {
  constexpr std::string_view plainEnding = ".xml";
  constexpr std::string_view encryptedEnding = ".enc";
  const std::size_t place = fileName.find(plainEnding);
  return place == std::string::npos ? fileName.append(encryptedEnding)
                                    : fileName.replace(place, plainEnding.size(), encryptedEnding);
}

bool EncryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase) {
  SecretByteArray plaintext(readWholeFile(fileName, readMessages));
  if (plaintext.length == 0) {
    return false;
  }
  const std::string output = encryptedFileName(fileName);
  std::error_code error;
  if (std::filesystem::equivalent(fileName, output, error)) {
    std::cerr << "Could not open file: " << output << std::endl;
    return false;
  }
  SecretByteArray passphraseBytes(passphrase);
  return kivbtcPassphraseEncrypt(plaintext, out, passphraseBytes) && writeWholeFile(output, {out.data, out.length});
}

bool WriteXmlFile(const char* fileName, const char* text) {
  if (fileName == nullptr || *fileName == '\0' || text == nullptr || *text == '\0') {
    std::cerr << "Parameter Error!" << std::endl;
    return false;
  }
  return writeWholeFile(fileName, text);
}

}  // namespace jexxml

using jexxml::SecretByteArray;

bool DecryptXmlFile(const char* fileName, KIVByteArray& out, char* passphrase) {
  KIVByteArray ciphertext = jexxml::readWholeFile(fileName, jexxml::readMessages);
  if (ciphertext.length == 0) {
    return false;
  }
  SecretByteArray passphraseBytes(passphrase);
  return kivbtcPassphraseDecrypt(ciphertext, out, passphraseBytes);
}

char* DecryptXmlFile(const char* fileName, char* passphrase) {
  SecretByteArray plaintext;
  return DecryptXmlFile(fileName, plaintext, passphrase) && plaintext.length != 0
             ? jexxml::toNulTerminatedText(plaintext)
             : nullptr;
}

bool DecryptFile(const char* fileName, char* passphrase) {
  SecretByteArray plaintext;
  return DecryptXmlFile(fileName, plaintext, passphrase);
}

bool EncryptFile(const char* fileName, char* passphrase) {
  KIVByteArray ciphertext;
  return jexxml::EncryptXmlFile(fileName, ciphertext, passphrase);
}
