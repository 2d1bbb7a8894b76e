#include "document/guard/counted_memory.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>

namespace jexxml {

using xercesc::OutOfMemoryException;
using xercesc::XMLPlatformUtils;

void* CountedMemory::allocate(XMLSize_t size) {
  if (beforeAllocation) {
    beforeAllocation(size);
  }
  Block* block = nullptr;
  try {
    block = static_cast<Block*>(XMLPlatformUtils::fgMemoryManager->allocate(sizeof(Block) + size));
  } catch (const OutOfMemoryException&) {
    block = takeFromReserve(size);
  }
  *block = {.previous = lastBlock, .next = nullptr, .size = size, .isFree = false};
  if (lastBlock != nullptr) {
    lastBlock->next = block;
  }
  lastBlock = block;
  ++blocks;
  bytesInUse += size;
  mostBytes = std::max(mostBytes, bytesInUse);
  return block + 1;
}

void CountedMemory::deallocate(void* memory) {
  if (memory == nullptr) {
    return;
  }
  Block* block = static_cast<Block*>(memory) - 1;
  if (block->previous != nullptr) {
    block->previous->next = block->next;
  }
  (block->next != nullptr ? block->next->previous : lastBlock) = block->previous;
  bytesInUse -= block->size;
  if (isFromReserve(block)) {
    block->isFree = true;
    shrinkReserve();
  } else {
    XMLPlatformUtils::fgMemoryManager->deallocate(block);
  }
}

CountedMemory::~CountedMemory() {
  while (lastBlock != nullptr) {
    deallocate(lastBlock + 1);
  }
}

xercesc::MemoryManager* CountedMemory::getExceptionMemoryManager() { return XMLPlatformUtils::fgMemoryManager; }

CountedMemory::Block* CountedMemory::takeFromReserve(std::size_t size) {
  // Of the list with which a destructor goes through a content model; nothing else takes only such blocks.
  const bool mayBeADestructors = size >= 10 * sizeof(void*) && size % sizeof(void*) == 0;
  const std::size_t open = mayBeADestructors || reserveUsedUp ? reserveSize : reserveSize / 2;
  reserveUsed = true;
  if (size > reserveSize || reserveTaken + sizeInReserve(size) > open) {
    reserveUsedUp = true;
    throw OutOfMemoryException();
  }
  void* block = reserve.get() + reserveTaken;
  reserveTaken += sizeInReserve(size);
  return static_cast<Block*>(block);
}

bool CountedMemory::isFromReserve(const Block* block) const {
  const void* address = block;
  const void* begin = reserve.get();
  const void* end = reserve.get() + reserveSize;
  return std::less_equal<>{}(begin, address) && std::less<>{}(address, end);
}

// To the end of its last block that is in use: destructors mostly give back first what they took last.
void CountedMemory::shrinkReserve() {
  std::size_t end = 0;
  for (std::size_t place = 0; place < reserveTaken;) {
    const Block& block = *reinterpret_cast<Block*>(reserve.get() + place);
    place += sizeInReserve(block.size);
    end = block.isFree ? end : place;
  }
  reserveTaken = end;
}

std::size_t CountedMemory::sizeInReserve(std::size_t size) {
  return sizeof(Block) + (size + sizeof(Block) - 1) / sizeof(Block) * sizeof(Block);
}

}  // namespace jexxml
