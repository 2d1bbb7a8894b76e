// SecretByteArray: bytes that are wiped before their memory is freed.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <cstring>
#include <utility>

namespace jexxml {

// For passphrases and plaintexts. A block that the array does not own is not wiped.
class SecretByteArray final : public KIVByteArray {
 public:
  SecretByteArray() = default;
  explicit SecretByteArray(KIVByteArray&& bytes) : KIVByteArray(std::move(bytes)) {}

  // Holds a copy of the bytes of `text` without its NUL.
  explicit SecretByteArray(const char* text) : KIVByteArray(text, static_cast<std::uint32_t>(std::strlen(text))) {}

  SecretByteArray(const SecretByteArray&) = delete;
  SecretByteArray& operator=(const SecretByteArray&) = delete;
  ~SecretByteArray() override { wipe(); }

  void clear() override {
    wipe();
    KIVByteArray::clear();
  }

 private:
  void wipe() {
    if (data != nullptr && owns) {
      explicit_bzero(data, length);
    }
  }
};

}  // namespace jexxml
