#include "description/token_positions.h"

#include <xercesc/framework/XMLRecognizer.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>

namespace tool {

using xercesc::XMLRecognizer;

constexpr std::size_t blockLength = std::size_t{1} << 14U;
constexpr std::size_t nowhere = std::u16string_view::npos;
constexpr std::u16string_view spaces = u" \t\r\n\u0085\u2028";  // of XML 1.1

static std::size_t startBefore(std::u16string_view text, char16_t end, std::u16string_view start) {
  return text.ends_with(end) ? text.rfind(start) : nowhere;
}

static const XMLByte* asBytes(const char* data) { return reinterpret_cast<const XMLByte*>(data); }

std::u16string TokenPositions::encodingName() const {
  const auto probed = XMLRecognizer::basicEncodingProbe(asBytes(file.data), file.length);
  const bool isDeclared = !declared.empty() && (probed == XMLRecognizer::UTF_8 || probed == XMLRecognizer::EBCDIC);
  return isDeclared ? declared : XMLRecognizer::nameForEncoding(probed);
}

// Returns false if nothing can be decoded. Xerces-C decodes some bytes that are not valid UTF-8.
bool TokenPositions::decode(std::size_t wanted) {
  if (transcoder == nullptr) {
    xercesc::XMLTransService::Codes result;
    transcoder.reset(
        xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(encodingName().c_str(), result, blockLength));
  }
  constexpr std::size_t bytesOfUnit = 4;
  const char* start = file.data + decodedBytes;
  const char* end = start + std::min(file.length - decodedBytes, bytesOfUnit * wanted);
  end = isUtf8() ? utf8::find_invalid(start, end) : end;
  const std::size_t length = text.size();
  text.resize(length + wanted);
  std::vector<unsigned char> sizes(wanted);
  XMLSize_t eaten = 0;
  XMLSize_t got = 0;
  try {
    got = transcoder->transcodeFrom(asBytes(start), static_cast<XMLSize_t>(end - start), text.data() + length, wanted,
                                    eaten, sizes.data());
  } catch (const xercesc::XMLException&) {
    eaten = got = 0;
  }
  text.resize(length + got);
  decodedBytes += eaten;
  return eaten != 0;
}

// Decodes character by character up to bytes that cannot be decoded. Returns false at the end. The last code unit of a
// block is indexed with the next block, because only the next code unit shows whether the last one ends a line.
bool TokenPositions::decodeBlock() {
  if (isDecoded) {
    return false;
  }
  if (decodedBytes == file.length || !decode(blockLength)) {
    while (decodedBytes < file.length && (decode(1) || decode(2))) {
    }
    isDecoded = true;
  }
  if (indexed == 0 && text.starts_with(u'\uFEFF')) {
    text.erase(0, 1);
  }
  for (; indexed + (isDecoded ? 0 : 1) < text.size(); ++indexed) {
    if (endsLine(indexed)) {
      lineStarts.push_back(indexed + 1);
    }
    if ((text[indexed] & 0xFC00U) == 0xDC00U) {
      lowSurrogates.push_back(indexed);
    }
  }
  return true;
}

bool TokenPositions::endsLine(std::size_t offset) const {
  const char16_t unit = text[offset];
  const char16_t next = offset + 1 < text.size() ? text[offset + 1] : u' ';
  return unit == u'\n' || (hasMoreLineEnds && (unit == u'\u0085' || unit == u'\u2028')) ||
         (unit == u'\r' && next != u'\n' && !(hasMoreLineEnds && next == u'\u0085'));
}

// Also decodes the code unit at the position.
std::size_t TokenPositions::offsetOf(const ParserPosition& position) {
  std::size_t offset = nowhere;
  do {
    if (position.line > 0 && position.column > 0 && position.line <= lineStarts.size()) {
      offset = lineStarts[position.line - 1] + position.column - 1;
    }
  } while ((offset == nowhere || offset + 1 >= text.size()) && decodeBlock());
  return offset > text.size() ? nowhere : offset;
}

Position TokenPositions::positionAt(std::size_t offset) const {
  const auto next = std::ranges::upper_bound(lineStarts, offset);
  const std::size_t lineStart = *std::prev(next);
  const auto pairs =
      std::ranges::lower_bound(lowSurrogates, offset) - std::ranges::lower_bound(lowSurrogates, lineStart);
  return {static_cast<std::uint64_t>(next - lineStarts.begin()),
          offset - lineStart - static_cast<std::size_t>(pairs) + 1};
}

Position TokenPositions::of(Token token, const ParserPosition& position, std::u16string_view name) {
  const std::size_t offset = offsetOf(position);
  if (offset == nowhere) {
    return {position.line, position.column};
  }
  const std::u16string_view before(text.data(), offset);
  const std::size_t start = token == Token::tag         ? startOfTag(offset)
                            : token == Token::attribute ? startOfAttribute(offset, name)
                            : token == Token::text      ? startOfText(offset)
                            : token == Token::insideTag ? before.rfind(u'<')
                            : token == Token::reference ? startBefore(before, u';', u"&")
                                                        : startBefore(before, u'>', u"<!--");
  return positionAt(start == nowhere ? offset : start);
}

// The last '<' starts the tag, because no value of an attribute contains a '<'.
std::size_t TokenPositions::startOfTag(std::size_t end) {
  if (end != lastTagEnd) {
    lastTagEnd = end;
    lastTagStart = startBefore({text.data(), end}, u'>', u"<");
    lastTagAttributes.clear();
  }
  return lastTagStart;
}

// A default attribute has the position of its tag.
std::size_t TokenPositions::startOfAttribute(std::size_t tagEnd, std::u16string_view name) {
  std::size_t next = text.find_first_of(u" \t\r\n\u0085\u2028/>", startOfTag(tagEnd));
  if (lastTagAttributes.empty()) {
    for (auto found = attributeAt(next); found && found->start < tagEnd; found = attributeAt(next)) {
      lastTagAttributes.push_back(*found);
      next = found->end == nowhere ? tagEnd : found->end + 1;
    }
  }
  const auto found = std::ranges::find(lastTagAttributes, name, [this](auto& given) { return given.nameIn(text); });
  return found == lastTagAttributes.end() ? lastTagStart : found->start;
}

// Returns the attribute at the offset in a tag, or after the white space there.
std::optional<TokenPositions::Attribute> TokenPositions::attributeAt(std::size_t offset) const {
  const std::size_t start = text.find_first_not_of(spaces, offset);
  const std::size_t nameEnd = text.find_first_of(u" \t\r\n\u0085\u2028=<>/\"'", start);
  const std::size_t quote = text.find_first_not_of(u" \t\r\n\u0085\u2028=", nameEnd);
  if (start == nameEnd || quote == nowhere || (text[quote] != u'"' && text[quote] != u'\'')) {
    return std::nullopt;
  }
  return Attribute{start, nameEnd, quote + 1, text.find(text[quote], quote + 1)};
}

TokenPositions::Value TokenPositions::unclosedValue(const ParserPosition& from, const ParserPosition& to) {
  const std::size_t last = std::min(offsetOf(to), text.size());
  const std::size_t first = from.line == 0 ? 0 : std::min(offsetOf(from), last);
  const std::size_t start = text.find(u'<', first - (first > 0 ? 1 : 0));  // Xerces-C may have read the '<'
  std::size_t i = text.find_first_of(u" \t\r\n\u0085\u2028<>/!?", start + 1);
  for (auto found = start >= last || i == start + 1 ? std::nullopt : attributeAt(i); found && found->start < last;
       found = attributeAt(i)) {
    const auto value = std::u16string_view(text).substr(found->value, found->end - found->value);
    const bool hasMarkup = value.find(u'<') != nowhere;
    i = found->end + 1;
    const bool hasNext = value.find(u'=') != nowhere && text.find_first_of(u" \t\r\n\u0085\u2028>", i) != i &&
                         text.compare(i, 2, u"/>") != 0;  // the value ends at the first quote of the next attribute
    if (hasMarkup || found->end == nowhere || hasNext) {
      return {found->nameIn(text), positionAt(found->start), hasMarkup};
    }
  }
  return {};
}

// Xerces-C reports the text before a reference after it has read the '&'.
std::size_t TokenPositions::startOfText(std::size_t offset) {
  constexpr std::u16string_view cdata = u"<![CDATA[";
  if (offset > 0 && text[offset - 1] == u'&') {
    return offset - 1;
  }
  const auto behindSpaces = [this](std::size_t from) {
    std::size_t start = nowhere;
    do {
      start = text.find_first_not_of(hasMoreLineEnds ? spaces : u" \t\r\n", from);
    } while (start == nowhere && decodeBlock());
    return start;
  };
  const std::size_t start = behindSpaces(offset);
  return start != nowhere && text.compare(start, cdata.size(), cdata) == 0 ? behindSpaces(start + cdata.size()) : start;
}

Position TokenPositions::ofBadByte(const ParserPosition& at, bool isSoon) {
  const std::size_t offset = offsetOf(at);
  while (isSoon && decodeBlock()) {
  }
  const bool isHere = offset == nowhere || offset + 1 >= text.size();
  return isDecoded && decodedBytes < file.length && (isSoon || isHere) ? positionAt(text.size()) : Position{};
}

}  // namespace tool
