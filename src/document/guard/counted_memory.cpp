#include "document/guard/counted_memory.h"

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <cstring>

namespace jexxml {

using xercesc::XMLPlatformUtils;

void* CountedMemory::allocate(XMLSize_t size) {
  if (beforeAllocation) {
    beforeAllocation(size);
  }
  Block* block = nullptr;
  try {
    block = static_cast<Block*>(XMLPlatformUtils::fgMemoryManager->allocate(sizeof(Block) + size));
  } catch (const xercesc::OutOfMemoryException&) {
    block = takeFromReserve(size);
  }
  *block = {.previous = lastBlock, .next = nullptr, .size = size};
  if (lastBlock != nullptr) {
    lastBlock->next = block;
  }
  lastBlock = block;
  bytesInUse += size;
  mostBytes = std::max(mostBytes, bytesInUse);
  std::memset(block + 1, 0, std::min(size, sizeof(Block)));  // of what was there before, nothing is taken for an object
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
  if (auto* const slot = std::ranges::find(taken, block); slot != taken.end()) {
    *slot = nullptr;
  } else {
    XMLPlatformUtils::fgMemoryManager->deallocate(block);
  }
}

CountedMemory::~CountedMemory() {
  while (lastBlock != nullptr) {
    deallocate(lastBlock + 1);
  }
}

CountedMemory::Block* CountedMemory::takeFromReserve(std::size_t size) {
  reserveUsed = true;
  auto* const slot = std::ranges::find(taken, nullptr);
  if (!mayBeADestructors(size) || sizeof(Block) + size > slotSize || slot == taken.end()) {
    throw xercesc::OutOfMemoryException();
  }
  void* block = reserve.get() + static_cast<std::size_t>(slot - taken.begin()) * slotSize;
  return *slot = static_cast<Block*>(block);
}

xercesc::MemoryManager* CountedMemory::getExceptionMemoryManager() { return XMLPlatformUtils::fgMemoryManager; }

std::pair<const void*, std::size_t> CountedMemory::newestBlock() const {
  return lastBlock == nullptr ? std::pair<const void*, std::size_t>() : std::pair(lastBlock + 1, lastBlock->size);
}

}  // namespace jexxml
