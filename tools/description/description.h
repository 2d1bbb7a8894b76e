// A description as a load takes it: its elements, and the findings about them, with their positions.
#pragma once

#include "description/rules.h"
#include "description/suppressions.h"
#include "description/token_positions.h"
#include "description/vocabulary.h"
#include "io/input_file.h"
#include "io/json_writer.h"
#include "io/messages.h"
#include "manifest/kiv_nodes.h"
#include "project/nox_nodes.h"

#include <qzjexxml/kiv_byte_array.h>

#include <xercesc/dom/DOMNode.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct Finding {
  Position position;
  Rule rule;
  std::string text;
};

// What a finding is about.
struct Anchor {
  Token token = Token::tag;
  ParserPosition position;
  std::u16string_view attribute;
  SuppressionGroup suppressions = 0;  // before its element
};

// An element that a load takes.
struct Element {
  // In the locale encoding; none for an absent attribute.
  std::optional<std::string> value(const char16_t* attribute) const;

  // Those of its attributes that it has, each after a space: NAME="VALUE", with long values cut where `areCut` is set.
  enum class Which { required, others, all };
  std::string attributesText(Which which, bool areCut = false) const;

  Anchor tag() const { return {Token::tag, end, {}, suppressions}; }
  Anchor attribute(std::u16string_view name) const { return {Token::attribute, end, name, suppressions}; }

  const ElementKind* kind;
  std::size_t parent;  // index of the element; the root element's is its own
  ParserPosition end;  // of the tag
  SuppressionGroup suppressions;
  const xercesc::DOMNode* node;
};

class DescriptionParser;

class Description {
 public:
  // Reads the file as a load does, up to a fatal error; that, and a file that cannot be read, are findings. Warnings of
  // the ignored rules are none. Throws std::bad_alloc. REQUIRES: Xerces-C is started while this object lives.
  explicit Description(std::string name, const Rules& ignored = Rules().set());
  Description(const Description&) = delete;
  Description& operator=(const Description&) = delete;
  ~Description();

  // Adds a warning, unless it is silenced; at most a thousand. `textOf` gives its text.
  void report(Rule rule, const Anchor& anchor, const auto& textOf) {
    if (isWanted(rule, anchor)) {
      findings.push_back({positionOf(anchor), rule, textOf()});
    }
  }

  // Adds an error.
  void report(Rule rule, const Position& position, const std::string& text) {
    findings.push_back({position, rule, text});
  }

  // Builds a load's tree over the document. Returns false, and adds an error, where a load fails. REQUIRES: there are
  // no errors. The description outlives the tree.
  bool build(jexxml::KivMaster& tree);
  bool build(jexxml::NoxMaster& tree);

  // Adds the comments that silence nothing, and sorts the findings by their positions.
  void finishFindings();

  // [{"severity":"error","rule":"not-valid","line":2,"column":1,"message":"..."}, ...], without the position where
  // there is none.
  void writeFindings(JsonWriter& json) const;

  // Tells the user why the file does not load, in the words of a load. Returns fileFailed.
  ExitStatus reportUnloadable() const;

  Position positionOf(const Anchor& anchor) { return positions.of(anchor.token, anchor.position, anchor.attribute); }

  // "FILE:LINE:COLUMN"; without a position, that of the file's start.
  std::string placeOf(const Position& position) const;
  std::string placeOf(const Anchor& anchor) { return placeOf(positionOf(anchor)); }

  bool isManifest() const { return root == &manifestVocabulary(); }
  bool hasErrors() const;
  std::uint32_t fileSize() const { return bytes.length; }

  const std::string file;                           // its name
  const ElementKind* root = &manifestVocabulary();  // as the content shows, or else the attribute `type`
  bool showsKind = false;                           // else it may be of either
  std::vector<Element> elements;                    // in document order, the root element first
  std::vector<Finding> findings;

 private:
  friend DescriptionParser;

  void parse();
  bool isWanted(Rule rule, const Anchor& anchor);
  bool isBuilt(const std::string& diagnostics);

  std::optional<InputFile> input;
  KIVByteArray bytes;
  Rules ignoredRules;
  TokenPositions positions{bytes};
  Suppressions suppressions;
  std::size_t warnings = 0;
  std::unique_ptr<DescriptionParser> parser;
};

}  // namespace tool
