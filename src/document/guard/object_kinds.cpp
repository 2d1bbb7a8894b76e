#include "document/guard/object_kinds.h"

#include <xercesc/framework/XMLRefInfo.hpp>
#include <xercesc/internal/XMLReader.hpp>
#include <xercesc/internal/XSerializable.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/KVStringPair.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/validators/DTD/DTDElementDecl.hpp>

#include <memory>

namespace jexxml {

using xercesc::BinMemInputStream;
using xercesc::XMLPlatformUtils;

namespace {

// Of an object that the parser library makes itself: its virtual functions may be others than those that are seen here.
template <typename T>
ObjectKind kindOf() {
  const std::unique_ptr<xercesc::XSerializable> example(T::createObject(XMLPlatformUtils::fgMemoryManager));
  return ObjectKind(static_cast<const T&>(*example));
}

}  // namespace

std::size_t ObjectKind::headerSize() {
  return XMLPlatformUtils::alignPointerForNewBlockAllocation(sizeof(xercesc::MemoryManager*));
}

ObjectKinds::ObjectKinds()
    : stream(BinMemInputStream(nullptr, 0, BinMemInputStream::BufOpt_Reference)),
      pair(kindOf<xercesc::KVStringPair>()),
      declaration(kindOf<xercesc::DTDElementDecl>()),
      identifier(kindOf<xercesc::XMLRefInfo>()) {}

const ObjectKinds& objectKinds() {
  static const ObjectKinds all;
  return all;
}

std::size_t readerBlockSize() {
  static const std::size_t size = ObjectKind::headerSize() + sizeof(xercesc::XMLReader);
  return size;
}

}  // namespace jexxml
