// KIVByteArray and the readers, as a consumer's own code compiles them.
#include "support/scratch_folder.h"

#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_file_reader.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstring>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string textOf(const KIVByteArray& array) { return {array.data, array.length}; }

void expectEmpty(const KIVByteArray& array) {
  EXPECT_EQ(array.data, nullptr);
  EXPECT_EQ(array.length, 0u);
  EXPECT_EQ(array.reserved, 0u);
  EXPECT_TRUE(array.owns);
}

TEST(ByteArray, WithoutBytesHoldsNoBlock) {
  KIVByteArray array;
  array.clear();
  expectEmpty(array);
  expectEmpty(KIVByteArray("abc", 0));
  expectEmpty(KIVByteArray(array));
}

TEST(ByteArray, CopiesDeeplyAndMovesTheBlock) {
  KIVByteArray original("ab\0de", 5);
  const KIVByteArray copy(original);
  EXPECT_NE(copy.data, original.data);
  EXPECT_EQ(textOf(copy), std::string("ab\0de", 5));

  KIVByteArray target("old", 3);
  target = original;
  EXPECT_NE(target.data, original.data);
  EXPECT_EQ(textOf(target), textOf(copy));
  const KIVByteArray& itself = target;
  target = itself;
  EXPECT_EQ(textOf(target), textOf(copy));

  const char* block = original.data;
  target = std::move(original);
  EXPECT_EQ(target.data, block);
  expectEmpty(original);
  target = original;
  expectEmpty(target);
}

TEST(ByteArray, LeavesABlockAloneThatItDoesNotOwn) {
  char block[] = "shared";
  KIVByteArray array;
  array.data = block;
  array.length = 6;
  array.owns = false;
  const KIVByteArray copy(array);
  EXPECT_TRUE(copy.owns);
  KIVByteArray moved(std::move(array));
  EXPECT_FALSE(moved.owns);
  moved.clear();
  EXPECT_STREQ(block, "shared");
  expectEmpty(moved);
}

class Reader : public testing::Test {
 protected:
  std::ifstream& open(std::string_view content) {
    stream.open(folder.write("file", content), std::ios::binary);
    return stream;
  }

  ScratchFolder folder;
  std::ifstream stream;
};

TEST_F(Reader, ReadsThePiecesUpToTheEnd) {
  KIVFileReaderWithoutTransform reader(&open("0123456789"));
  char piece[4];
  EXPECT_EQ(reader.doRead(piece, 4), 4);
  EXPECT_EQ(reader.read(piece, 4), 4);
  EXPECT_EQ(std::string(piece, 4), "4567");
  EXPECT_TRUE(reader.hasMore());
  EXPECT_EQ(reader.streamStatus(), 0);
  EXPECT_EQ(reader.doRead(piece, 4), 2);
  EXPECT_EQ(std::string(piece, 2), "89");
  EXPECT_FALSE(reader.hasMore());
  EXPECT_EQ(reader.doRead(piece, 4), 0);
  EXPECT_EQ(reader.streamStatus(), -1001);
  EXPECT_TRUE(reader.isOk());
  EXPECT_STREQ(reader.transformName(), "");
}

TEST_F(Reader, ReadsAllAndStaysWhereItWas) {
  open("abc").get();
  KIVFileReaderWithoutTransform reader(&stream);
  KIVByteArray& all = reader.readAll();
  EXPECT_EQ(textOf(all), "abc");
  EXPECT_EQ(&reader.readAll(), &all);
  EXPECT_EQ(textOf(all), "abc");
  EXPECT_TRUE(reader.hasMore());
  char next = 0;
  EXPECT_EQ(reader.doRead(&next, 1), 1);
  EXPECT_EQ(next, 'b');
}

TEST_F(Reader, TakesAParameterWithABlock) {
  KIVFileReaderWithoutTransform reader(&open("abc"));
  KIVReadParam parameter;
  parameter.block = new char[1];
  parameter.ownsBlock = true;
  EXPECT_EQ(textOf(reader.readAll(std::move(parameter))), "abc");
  EXPECT_EQ(parameter.block, nullptr);
  EXPECT_FALSE(parameter.ownsBlock);
  stream.setstate(std::ios::eofbit);
  expectEmpty(reader.readAll());
}

// Has 3 bytes, of which its end seems to be 7 away.
struct ShrinkingFile : std::stringbuf {
  ShrinkingFile() : std::stringbuf("abc") {}
  pos_type seekoff(off_type offset, std::ios::seekdir way, std::ios::openmode mode) override {
    const off_type place = std::stringbuf::seekoff(offset, way, mode);
    return place == 3 ? 10 : place;
  }
};

TEST_F(Reader, HoldsWhatIsLeftOfAFileThatShrinks) {
  ShrinkingFile file;
  static_cast<std::ios&>(open("abc")).rdbuf(&file);
  KIVFileReaderWithoutTransform reader(&stream);
  EXPECT_EQ(textOf(reader.readAll()), "abc");
}

struct Layout : KIVFileReader {
  Layout();
  static constexpr bool isInOrder() {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
    return offsetof(Layout, stream) == sizeof(void*) && offsetof(Layout, bytes) == 2 * sizeof(void*) &&
           offsetof(Layout, bytes) < offsetof(Layout, more) && offsetof(Layout, more) < offsetof(Layout, error);
#pragma GCC diagnostic pop
  }
};
static_assert(Layout::isInOrder());

// A pointer to a virtual member function begins with one more than its offset in the virtual table.
template <typename Function>
std::size_t slotOf(Function function) {
  std::size_t place = 0;
  std::memcpy(&place, &function, sizeof place);
  return place / sizeof(void*);
}

TEST(ReaderClass, HasItsFunctionsInTheOrderOfTheContract) {
  using R = KIVFileReader;  // whose destructor has the first two slots
  const std::vector<std::size_t> slots = {slotOf(&R::transformName),
                                          slotOf(&R::doRead),
                                          slotOf(&R::read),
                                          slotOf<KIVByteArray& (R::*)()>(&R::readAll),
                                          slotOf<KIVByteArray& (R::*)(KIVReadParam)>(&R::readAll),
                                          slotOf(&R::hasMore),
                                          slotOf(&R::lastError),
                                          slotOf(&R::isOk),
                                          slotOf(&R::streamStatus)};
  EXPECT_EQ(slots, (std::vector<std::size_t>{2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_EQ(slotOf(&KIVByteArray::clear), 2u);
}

TEST_F(Reader, HasNothingWithoutAGoodStream) {
  KIVFileReaderWithoutTransform none(nullptr);
  expectEmpty(none.readAll());
  EXPECT_FALSE(none.hasMore());
  EXPECT_EQ(none.streamStatus(), -1000);
  EXPECT_EQ(none.doRead(nullptr, 1), -1);

  KIVFileReaderWithoutTransform closed(&stream);
  expectEmpty(closed.readAll());
  EXPECT_EQ(closed.streamStatus(), -1000);

  open("abc").setstate(std::ios::eofbit);
  KIVFileReaderWithoutTransform ended(&stream);
  expectEmpty(ended.readAll());
  EXPECT_FALSE(ended.hasMore());
  EXPECT_EQ(ended.streamStatus(), -1001);

  stream.clear(std::ios::badbit);
  char byte = 0;
  EXPECT_EQ(ended.doRead(&byte, 1), -1);
}

TEST_F(Reader, ReadsAPipeInPiecesOnly) {
  ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
  std::fstream writer(folder.path("pipe"));  // open both ways, so that nobody waits
  writer << "ab" << std::flush;
  stream.open(folder.path("pipe"), std::ios::binary);
  KIVFileReaderWithoutTransform reader(&stream);
  expectEmpty(reader.readAll());
  char piece[2];
  EXPECT_EQ(reader.doRead(piece, 2), 2);
  EXPECT_EQ(std::string(piece, 2), "ab");
}

}  // namespace
