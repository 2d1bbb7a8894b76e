// TokenPositions: where a token of a description starts, found from the position of the parser before or behind it.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// As Xerces-C counts: lines from 1, and columns from 1 in UTF-16 code units. Zeros when there is none.
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
  tag,        // or other markup that starts with '<' and ends with '>'
  insideTag,  // the tag that the parser is in
  attribute,  // of the tag that the parser is behind
  text,       // which the parser is before
  reference,  // to an entity
  comment,
};

class TokenPositions {
 public:
  // The file outlives this object.
  explicit TokenPositions(const KIVByteArray& bytes) : file(bytes) {}

  // Before the first question, for a document that has an XML declaration.
  void setDeclaration(const XMLCh* encodingName, bool isVersion11) {
    encoding = encodingName;
    hasMoreLineEnds = isVersion11;
  }

  // The start of the token that the parser is behind, unless Token says otherwise; `name` is the attribute's. The
  // parser's position where there is no such token.
  Position of(Token token, const ParserPosition& position, std::u16string_view name = {});

  // The position of a byte that cannot be decoded, at `at`, or anywhere behind it where `isSoon` is set. Zeros when
  // there is none.
  Position ofBadByte(const ParserPosition& at, bool isSoon);

  bool isUtf8() const {
    return encoding.empty() || xercesc::XMLString::compareIString(encoding.c_str(), u"UTF-8") == 0;
  }

  // An attribute whose value is not closed, or contains a '<', which no value may.
  struct Value {
    std::u16string_view attribute;  // empty when there is none
    Position position;
    bool hasMarkup = false;
  };

  // The first one in the tags between two positions.
  Value unclosedValue(const ParserPosition& from, const ParserPosition& to);

 private:
  struct Attribute {
    std::u16string_view name(std::u16string_view text) const { return text.substr(start, nameEnd - start); }

    std::size_t start;
    std::size_t nameEnd;
    std::size_t value;
    std::size_t end;  // of the value
  };

  bool decode(std::size_t wanted);
  bool decodeBlock();
  bool endsLine(std::size_t offset) const;
  std::size_t offsetOf(const ParserPosition& position);
  Position positionAt(std::size_t offset) const;
  std::size_t startOf(Token token, std::size_t offset, std::u16string_view name);
  std::size_t startOfTag(std::size_t end);
  std::size_t startOfAttribute(std::size_t tagEnd, std::u16string_view name);
  std::size_t startOfText(std::size_t offset);
  std::optional<Attribute> attributeAt(std::size_t offset) const;

  const KIVByteArray& file;
  std::u16string encoding;
  bool hasMoreLineEnds = false;  // those of XML 1.1
  std::unique_ptr<xercesc::XMLTranscoder> transcoder;
  bool isDecoded = false;
  std::size_t decodedBytes = 0;
  std::u16string text;      // decoded as Xerces-C does, as far as it was needed
  std::size_t indexed = 0;  // of the text
  std::vector<std::size_t> lineStarts = {0};
  std::vector<std::size_t> lowSurrogates;
  std::size_t lastTagEnd = 0;  // a tag may have many attributes with findings
  std::size_t lastTagStart = 0;
  std::vector<Attribute> lastTagAttributes;
};

}  // namespace tool
