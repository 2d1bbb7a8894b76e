// CountedMemory: allocates from Xerces-C's default memory manager, and counts what one parser has allocated.
#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace jexxml {

// Xerces-C does not expect exceptions from allocations: some of its objects then free a block twice, and some
// destructors allocate. Therefore, when the system is out of memory, `isAbandoned` is set, and small blocks come from a
// reserve until the parser ends the parse. A block that does not fit into the reserve throws. Once `isAbandoned` is
// set, only the destructor frees blocks, including those that Xerces-C leaks when an exception passes through it.
class CountedMemory final : public xercesc::MemoryManager {
 public:
  ~CountedMemory() override;

  // Throws what `beforeReader` throws, and xercesc::OutOfMemoryException.
  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  MemoryManager* getExceptionMemoryManager() override;

  // Currently allocated. `candidates` counts the blocks that a lookup may compare a text with: those allocated after
  // the reader of the document. Every 256 bytes count as one more, because many texts may begin like a long text.
  std::uint64_t candidates = 0;
  std::uint64_t bytes = 0;

  bool isAbandoned = false;  // the parse has to end

  // Called before the reader of an entity is allocated. All readers have the size of the first large block, which is
  // the reader of the document.
  std::function<void()> beforeReader;

 private:
  // The header of each block. All headers are linked in a ring.
  struct Block {
    Block* previous;
    Block* next;
    std::size_t size;
    std::size_t candidates;
  };
  static_assert(sizeof(Block) % alignof(std::max_align_t) == 0);

  Block* takeFromReserve(std::size_t size);
  bool isReader(std::size_t size);

  // 2 MiB, which take no memory until they are used. They serve the allocations up to the next callback, and
  // the lists that the destructors of content models allocate. dtdLimit bounds these lists.
  static constexpr std::size_t reserveBlocks = (std::size_t{2} << 20U) / sizeof(Block);

  const std::unique_ptr<Block[]> reserve = std::make_unique_for_overwrite<Block[]>(reserveBlocks);
  std::size_t reserveUsed = 0;
  Block ring = {&ring, &ring, 0, 0};
  std::size_t readerSize = 0;
};

}  // namespace jexxml
