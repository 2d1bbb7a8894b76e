// Recognising objects of the parser library by the blocks of memory that they take.
#ifndef QZJEXXML_DOCUMENT_GUARD_OBJECT_KINDS_H
#define QZJEXXML_DOCUMENT_GUARD_OBJECT_KINDS_H

#include <cstddef>
#include <cstring>
#include <utility>

namespace jexxml {

// A class whose objects tell of what the parser library does: the size of the block that one takes, before which the
// library keeps whose memory it is, and the pointer with which each begins, to virtual functions or, without them, to
// whose memory it uses. A text may have the size, but not the pointer.
class ObjectKind {
 public:
  template <typename T>
  explicit ObjectKind(const T& example) : size(headerSize() + sizeof(T)) {
    std::memcpy(&begin, static_cast<const void*>(&example), sizeof begin);
  }

  // The object in a block, or null when it is something else.
  template <typename T = void>
  const T* in(const std::pair<const void*, std::size_t>& block) const {
    if (block.second != size) {
      return nullptr;
    }
    const void* object = static_cast<const std::byte*>(block.first) + headerSize();
    return std::memcmp(object, &begin, sizeof begin) == 0 ? static_cast<const T*>(object) : nullptr;
  }

  // What the library puts before an object.
  static std::size_t headerSize();

 private:
  std::size_t size;
  void* begin;
};

struct ObjectKinds {
  ObjectKinds();

  ObjectKind stream;       // BinMemInputStream: the text of an entity
  ObjectKind pair;         // KVStringPair: name and value of an attribute of the tag that is read
  ObjectKind declaration;  // DTDElementDecl
  ObjectKind identifier;   // XMLRefInfo
};

// REQUIRES: the parser library is started, when it is called first.
const ObjectKinds& objectKinds();

// Of an XMLReader, for an entity or the document.
std::size_t readerBlockSize();

}  // namespace jexxml

#endif  // QZJEXXML_DOCUMENT_GUARD_OBJECT_KINDS_H
