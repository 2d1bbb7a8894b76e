// TokenPositions: the starts of tokens, found from the positions that Xerces-C reports before or after them.
#pragma once

#include <qzjexxml/kiv_byte_array.h>

#include <utf8.h>
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

// A position as Xerces-C counts: from 1, columns in UTF-16 code units. Both are 0 if it is unknown.
struct ParserPosition {
  std::uint32_t line = 0;
  std::uint32_t column = 0;
};

// A position as people count: from 1, columns in characters. Both are 0 if it is unknown.
struct Position {
  std::uint64_t line = 0;
  std::uint64_t column = 0;
};

enum class Token : std::uint8_t {
  tag,        // a tag, or other markup in angle brackets, that ends before the position
  insideTag,  // the tag that contains the position
  attribute,  // an attribute of the tag that ends before the position
  text,       // the text after the position
  reference,  // the entity reference before the position
  comment,
};

class TokenPositions {
 public:
  // The file outlives this object.
  explicit TokenPositions(const KIVByteArray& bytes) : file(bytes) {}

  // Must be called before the other functions if the document has an XML declaration.
  void setDeclaration(const XMLCh* encoding, bool isVersion11) {
    declared = encoding;
    hasMoreLineEnds = isVersion11;
  }

  // Returns the start of the token, or the position if there is no such token. `name` is the name of the attribute.
  Position of(Token token, const ParserPosition& position, std::u16string_view name = {});

  // Returns the position of the undecodable byte that is at `at`, or after `at` if `isSoon`; unknown if there is none.
  Position ofBadByte(const ParserPosition& at, bool isSoon);

  bool isUtf8() const { return xercesc::XMLString::compareIString(encodingName().c_str(), u"UTF-8") == 0; }
  bool hasInvalidUtf8() const { return isUtf8() && !utf8::is_valid(file.data, file.data + file.length); }

  // An attribute whose value is not closed or contains a '<'.
  struct Value {
    std::u16string_view attribute;  // empty if there is none
    Position position;
    bool hasMarkup = false;
  };

  // Returns the first such attribute in the start tag that begins between two positions.
  Value unclosedValue(const ParserPosition& from, const ParserPosition& to);

 private:
  struct Attribute {
    std::u16string_view nameIn(std::u16string_view decoded) const { return decoded.substr(start, nameEnd - start); }

    std::size_t start;
    std::size_t nameEnd;
    std::size_t value;
    std::size_t end;  // of the value
  };

  std::u16string encodingName() const;
  bool decode(std::size_t wanted);
  bool decodeBlock();
  bool endsLine(std::size_t offset) const;
  std::size_t offsetOf(const ParserPosition& position);
  Position positionAt(std::size_t offset) const;
  std::size_t startOfTag(std::size_t end);
  std::size_t startOfAttribute(std::size_t tagEnd, std::u16string_view name);
  std::size_t startOfText(std::size_t offset);
  std::optional<Attribute> attributeAt(std::size_t offset) const;

  const KIVByteArray& file;
  std::u16string declared;
  bool hasMoreLineEnds = false;  // as in XML 1.1
  std::unique_ptr<xercesc::XMLTranscoder> transcoder;
  bool isDecoded = false;
  std::size_t decodedBytes = 0;
  std::u16string text;      // the decoded beginning of the file
  std::size_t indexed = 0;  // code units of the text, in lineStarts and lowSurrogates
  std::vector<std::size_t> lineStarts = {0};
  std::vector<std::size_t> lowSurrogates;
  std::size_t lastTagEnd = 0;  // cached, because a tag may have many findings
  std::size_t lastTagStart = 0;
  std::vector<Attribute> lastTagAttributes;
};

}  // namespace tool
