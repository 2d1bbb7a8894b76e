// CountedMemory: Xerces-C's default memory, with a count of what one parser has of it.
#pragma once

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace jexxml {

// Xerces-C is not written for exceptions out of allocations: some of its objects then free a block twice, and some
// destructors allocate. So when the system has no memory left, small blocks come from a reserve, until the parser sees
// `isAbandoned` and ends the parse; a block that does not fit throws. From then on nothing is given back until the end,
// when all blocks are released, also those that Xerces-C forgets where an exception passes.
class CountedMemory final : public xercesc::MemoryManager {
 public:
  ~CountedMemory() override;

  // Throws what `beforeReader` does, and xercesc::OutOfMemoryException.
  void* allocate(XMLSize_t size) override;
  void deallocate(void* memory) override;
  MemoryManager* getExceptionMemoryManager() override;

  // In use now. Things are the blocks since the document's reader, where a block of a long text counts as several: its
  // beginning may be compared with many texts that begin alike. Objects are smaller than that on 32 bit and on 64 bit.
  std::uint64_t things = 0;
  std::uint64_t bytes = 0;

  bool isAbandoned = false;  // the parse cannot go on

  // Called before the reader of an entity is allocated: a block as large as the document's own reader, which was the
  // first large one.
  std::function<void()> beforeReader;

 private:
  // Stands before each block. All blocks are in a ring.
  struct Block {
    Block* previous;
    Block* next;
    std::size_t size;
    std::size_t things;
  };
  static_assert(sizeof(Block) % alignof(std::max_align_t) == 0);

  Block* takeFromReserve(std::size_t size);
  bool isReader(std::size_t size);

  // 2 MiB, not touched before they are needed: for what Xerces-C allocates up to the next callback, and for the lists
  // that the destructors of content models make, whose names all stand in the type declaration (typeLimit).
  static constexpr std::size_t reserveBlocks = (std::size_t{2} << 20U) / sizeof(Block);

  const std::unique_ptr<Block[]> reserve = std::make_unique_for_overwrite<Block[]>(reserveBlocks);
  std::size_t reserveUsed = 0;
  Block ring = {&ring, &ring, 0, 0};
  std::size_t readerSize = 0;
};

}  // namespace jexxml
