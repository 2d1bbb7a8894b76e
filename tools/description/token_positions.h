// TokenPositions: from the positions that the parser has when it is behind a token to the position of the token.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// As the parser counts: lines from 1, and columns from 1 in 16-bit units. Zeros when there is none.
struct ParserPosition {
  std::uint32_t line = 0;
  std::uint32_t column = 0;
};

// As people count: columns in characters.
struct Position {
  std::uint64_t line = 0;
  std::uint64_t column = 0;
};

enum class Token : std::uint8_t {
  here,       // the parser is not behind the token, unless that ends with '>'
  tag,        // from its '<'
  insideTag,  // the tag that the parser is in
  attribute,  // of the tag, from its name
  text,       // the parser is before it
  reference,  // to an entity
  comment,
};

class TokenPositions {
 public:
  // The file outlives this object.
  explicit TokenPositions(const KIVByteArray& bytes) : file(bytes) {}

  // What the XML declaration says; nothing is asked before. `encoding` may be null.
  void setDeclaration(const XMLCh* encoding, bool isVersion11);

  // The position of the token that the parser is at. Where it is not found, the parser's position. `name` is the
  // attribute's.
  Position of(Token token, const ParserPosition& position, std::u16string_view name = {});

  // The position of a byte that cannot be decoded, at which the parser is, or which is soon to come; zeros when there
  // is none.
  Position ofBadByte(const ParserPosition& at, bool isSoon);

  // Whether that byte is none of UTF-8.
  bool isUtf8() const;

  // An attribute whose value is not closed, or has markup in it, which no value may have.
  struct Value {
    std::u16string_view attribute;  // empty when there is none
    Position position;
    bool hasMarkup = false;
  };

  // The first one in the tags between two positions.
  Value unclosedValue(const ParserPosition& from, const ParserPosition& to);

 private:
  struct Attribute {
    std::size_t start;
    std::size_t nameEnd;
    std::size_t value;
    std::size_t end;  // of the value
  };

  bool decode(std::size_t wanted);
  bool decodeBlock();
  void index();
  std::size_t decodeTo(const ParserPosition& position);
  std::u16string_view part(std::size_t start, std::size_t end) const;
  std::optional<Attribute> attributeAt(std::size_t offset) const;
  bool endsLine(std::size_t offset) const;
  std::size_t offsetOf(const ParserPosition& position) const;
  Position positionAt(std::size_t offset) const;
  std::size_t startOf(Token token, std::size_t offset, std::u16string_view name);
  std::size_t startOfTag(std::size_t end);
  std::size_t startOfText(std::size_t offset);
  void findAttributes();

  const KIVByteArray& file;
  std::u16string declaredEncoding;
  bool hasMoreLineEnds = false;  // those of XML 1.1
  std::unique_ptr<xercesc::XMLTranscoder> transcoder;
  bool isDecoded = false;
  std::size_t decodedBytes = 0;
  std::u16string text;      // decoded as the parser does, as far as somebody asked, and up to what cannot be
  std::size_t indexed = 0;  // of the text
  std::vector<std::uint32_t> lineStarts = {0};  // offsets
  std::vector<std::uint32_t> pairs;             // offsets of the second halves of surrogate pairs
  std::size_t tagEnd = 0;                       // of the tag that was asked for last
  std::size_t tagStart = 0;
  std::vector<Attribute> attributes;  // of that tag, once one was asked for
};

}  // namespace tool
