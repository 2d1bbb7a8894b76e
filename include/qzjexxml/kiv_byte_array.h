// KIVByteArray: a block of raw bytes and its length. It carries whole files between the file functions, Xerces-C and
// the crypto library.
//
// The crypto library reads and fills the same objects. Therefore three things are a binary contract: the order of the
// fields, the order of the virtual functions, and how blocks are freed. The class is inline.
#ifndef QZJEXXML_KIV_BYTE_ARRAY_H
#define QZJEXXML_KIV_BYTE_ARRAY_H

#include <qzjexxml/export.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

// The object takes 20 bytes on 32-bit x86. An array of length 0 holds no block: its `data` is null.
//
// Blocks are allocated with new[] and freed with delete[]. An array frees its block only if `owns` is true. Code that
// stores a block in `data` allocates it with new[] of the same C++ runtime, or sets `owns` to false.
//
// Not synchronised. Functions that allocate throw std::bad_alloc when out of memory, and leave *this unchanged.
class QZJEXXML_EXPORT KIVByteArray {
 public:
  KIVByteArray() = default;

  // Holds a copy of `count` bytes. REQUIRES: `bytes` is valid for `count` bytes; it may be null for 0.
  KIVByteArray(const char* bytes, std::uint32_t count) {
    if (count != 0) {
      data = new char[count];
      length = count;
      std::memcpy(data, bytes, count);
    }
  }

  // A deep copy. It owns its block, even if the other array does not own the original.
  KIVByteArray(const KIVByteArray& other) : KIVByteArray(other.data, other.holdsData() ? other.length : 0) {}

  // Takes the block and its ownership from the other array, which is empty afterwards.
  KIVByteArray(KIVByteArray&& other) noexcept { take(other); }

  // Frees the block that this array owned. Assigning an empty array makes this array empty.
  KIVByteArray& operator=(const KIVByteArray& other) {
    if (this != &other) {
      *this = KIVByteArray(other);
    }
    return *this;
  }

  KIVByteArray& operator=(KIVByteArray&& other) noexcept {
    if (this != &other) {
      clear();
      take(other);
    }
    return *this;
  }

  virtual ~KIVByteArray() { freeBlock(); }

  // Frees the block if the array owns it, and resets all fields to those of an empty array.
  virtual void clear() {
    freeBlock();
    forgetBlock();
  }

  // Callers and the crypto library read and write the fields directly.
  char* data = nullptr;
  std::uint32_t length = 0;    // bytes in the block; no terminating NUL is stored or counted
  std::uint32_t reserved = 0;  // part of the layout, not used by this library
  bool owns = true;            // the array frees the block

 private:
  bool holdsData() const { return data != nullptr && length != 0; }

  void freeBlock() {
    if (holdsData() && owns) {
      delete[] data;
    }
  }

  void forgetBlock() {
    data = nullptr;
    length = 0;
    reserved = 0;
    owns = true;
  }

  void take(KIVByteArray& other) {
    data = other.data;
    length = other.length;
    reserved = other.reserved;
    owns = other.owns;
    other.forgetBlock();
  }
};

#if defined(__i386__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(sizeof(KIVByteArray) == 20, "the crypto library expects a record of 20 bytes");
static_assert(offsetof(KIVByteArray, data) == 4, "the virtual-table pointer comes first");
static_assert(offsetof(KIVByteArray, length) == 8, "length follows data");
static_assert(offsetof(KIVByteArray, reserved) == 12, "reserved follows length");
static_assert(offsetof(KIVByteArray, owns) == 16, "owns follows reserved");
#pragma GCC diagnostic pop
#endif

#endif  // QZJEXXML_KIV_BYTE_ARRAY_H
