// KIVByteArray and the readers, compiled as in a consumer.
#include "support/scratch_directory.h"

#include <qzjexxml/kiv_byte_array.h>
#include <qzjexxml/kiv_file_reader.h>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <utility>

namespace {

std::string textOf(const KIVByteArray& array) { return {array.data, array.length}; }

void expectEmpty(const KIVByteArray& array) {
  EXPECT_EQ(array.data, nullptr);
  EXPECT_TRUE(array.length == 0 && array.reserved == 0 && array.owns);
}

TEST(ByteArray, CopiesDeeplyAndMovesTheBlock) {
  KIVByteArray original("ab\0de", 5);
  KIVByteArray target("old", 3);
  target = original;
  EXPECT_NE(target.data, original.data);
  const KIVByteArray& itself = target;
  target = itself;
  EXPECT_EQ(textOf(target), std::string("ab\0de", 5));
  const char* block = original.data;
  original.reserved = 1;
  target = std::move(original);
  EXPECT_EQ(target.data, block);
  EXPECT_EQ(target.reserved, 1u);
  expectEmpty(original);
  target = original;
  expectEmpty(target);
  expectEmpty(KIVByteArray("abc", 0));
  KIVByteArray withoutBlock;
  withoutBlock.length = 3;
  expectEmpty(KIVByteArray(withoutBlock));
  KIVByteArray same("abc", 3);
  KIVByteArray& alias = same;
  same = std::move(alias);
  EXPECT_EQ(textOf(same), "abc");
}

TEST(ByteArray, DoesNotFreeABlockThatItDoesNotOwn) {
  char block[] = "shared";
  KIVByteArray array;
  array.data = block;
  array.length = 6;
  array.owns = false;
  EXPECT_TRUE(KIVByteArray(array).owns);
  KIVByteArray moved(std::move(array));
  EXPECT_FALSE(moved.owns);
  moved.clear();
  EXPECT_STREQ(block, "shared");
  expectEmpty(moved);
}

class Reader : public testing::Test {
 protected:
  std::ifstream& open(std::string_view content) {
    stream.open(directory.write("file", content), std::ios::binary);
    return stream;
  }

  ScratchDirectory directory;
  std::ifstream stream;
};

TEST_F(Reader, ReadsThePiecesUpToTheEnd) {
  KIVFileReaderWithoutTransform reader(&open("0123456789"));
  char piece[4];
  EXPECT_EQ(reader.doRead(piece, 4), 4);
  EXPECT_EQ(reader.read(piece, 4), 4);
  EXPECT_EQ(std::string(piece, 4), "4567");
  EXPECT_TRUE(reader.doRead(piece, 0) == 0 && reader.read(piece, -1) == 0 && reader.hasMore());
  EXPECT_EQ(reader.streamStatus(), 0);
  EXPECT_EQ(reader.doRead(piece, 4), 2);
  EXPECT_FALSE(reader.hasMore());
  EXPECT_EQ(reader.doRead(piece, 4), 0);
  EXPECT_EQ(reader.streamStatus(), -1001);
  EXPECT_TRUE(reader.isOk());
  EXPECT_STREQ(reader.transformName(), "");
}

TEST_F(Reader, ReadsAllAndKeepsItsPosition) {
  open("abc").get();
  KIVFileReaderWithoutTransform reader(&stream);
  KIVReadParam parameter;
  parameter.block = new char[1];
  parameter.ownsBlock = true;
  KIVByteArray& all = reader.readAll(std::move(parameter));
  EXPECT_FALSE(parameter.ownsBlock || parameter.block != nullptr);
  EXPECT_EQ(&reader.readAll(), &all);
  EXPECT_EQ(textOf(all), "abc");
  char next = 0;
  EXPECT_EQ(reader.doRead(&next, 1), 1);
  EXPECT_EQ(next, 'b');
  stream.setstate(std::ios::eofbit);
  expectEmpty(reader.readAll());
}

// Has 3 bytes, but reports a size of 10.
struct ShrinkingFile : std::stringbuf {
  ShrinkingFile() : std::stringbuf("abc") {}
  pos_type seekoff(off_type offset, std::ios::seekdir way, std::ios::openmode mode) override {
    const off_type place = std::stringbuf::seekoff(offset, way, mode);
    return place == 3 ? 10 : place;
  }
};

TEST_F(Reader, ReadsTheRestOfAFileThatShrinks) {
  ShrinkingFile file;
  static_cast<std::ios&>(open("abc")).rdbuf(&file);
  EXPECT_EQ(textOf(KIVFileReaderWithoutTransform(&stream).readAll()), "abc");
}

TEST_F(Reader, HasNothingWithoutAGoodStream) {
  KIVFileReaderWithoutTransform none(nullptr);
  KIVFileReaderWithoutTransform closed(&stream);
  open("abc").setstate(std::ios::eofbit);
  KIVFileReaderWithoutTransform ended(&stream);
  EXPECT_EQ(none.streamStatus(), -1000);
  EXPECT_EQ(none.doRead(nullptr, 1), -1);
  for (KIVFileReader* reader : {&none, &closed, &ended}) {
    expectEmpty(reader->readAll());
    EXPECT_FALSE(reader->hasMore());
  }
  stream.close();
  EXPECT_EQ(closed.streamStatus(), -1000);
  stream.clear(std::ios::badbit);
  char byte = 0;
  EXPECT_EQ(ended.doRead(&byte, 1), -1);
}

// A pointer to a virtual member function starts with the offset in the virtual table plus 1.
template <typename Function>
std::size_t slotOf(Function function) {
  std::size_t place = 0;
  std::memcpy(&place, &function, sizeof place);
  return place / sizeof(void*);
}

TEST(ReaderClass, HasItsFunctionsInTheOrderOfTheContract) {
  using R = KIVFileReader;
  std::size_t next = 2;  // the destructor has the first two slots
  for (const std::size_t slot :
       {slotOf(&R::transformName), slotOf(&R::doRead), slotOf(&R::read), slotOf<KIVByteArray& (R::*)()>(&R::readAll),
        slotOf<KIVByteArray& (R::*)(KIVReadParam)>(&R::readAll), slotOf(&R::hasMore), slotOf(&R::lastError),
        slotOf(&R::isOk), slotOf(&R::streamStatus)}) {
    EXPECT_EQ(slot, next++);
  }
}

}  // namespace
