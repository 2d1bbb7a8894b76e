#include "description/description.h"

#include "description/description_parser.h"
#include "io/library_diagnostics.h"
#include "io/quoting.h"
#include "manifest/kiv_data_load.h"
#include "text/lcp_text.h"
#include "tree/node_attribute.h"

#include <qzjexxml/qzjexxml.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

namespace tool {
std::string positionOf(const std::string& file, const Position& position) {
  return file + ':' + std::to_string(std::max<std::uint64_t>(position.line, 1)) + ':' +
         std::to_string(std::max<std::uint64_t>(position.column, 1));
}

std::optional<std::string> Element::value(const char16_t* attribute) const {
  jexxml::NodeAttribute read(const_cast<xercesc::DOMNode*>(node), attribute);
  read.fetch();
  return read.missing ? std::nullopt : std::optional(read.getText());
}

std::string Element::attributesText(Which which, bool areCut) const {
  std::string text;
  for (const AttributeKind& attribute : kind->attributes) {
    if (which == Which::all || attribute.required == (which == Which::required)) {
      if (const auto given = value(attribute.parserName.c_str())) {
        text += ' ' + attribute.name + '=' + (areCut ? inQuotes(*given) : '"' + *given + '"');
      }
    }
  }
  return text;
}

Description::Description(const char* path, const Rules& ignored) : ignoredRules(ignored) {
  bool wasRead = false;
  const std::string diagnostics = diagnosticsOf([&] { wasRead = ReadXmlFile(path, bytes); });
  if (wasRead) {
    parse();
  } else {
    report(Rule::unreadable, Position{}, diagnostics.substr(0, diagnostics.find('\n')));
  }
}

Description::~Description() = default;

void Description::parse() {
  parser = std::make_unique<DescriptionParser>(*this);
  try {
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data), bytes.length, "");
    source.setCopyBufToStream(false);
    parser->parse(source);
  } catch (const jexxml::DocumentRefused&) {  // which was reported
  } catch (const xercesc::XMLException& exception) {
    report(Rule::notLoadable, Position{}, std::string(jexxml::LcpText(exception.getMessage()).view()));
  } catch (const xercesc::DOMException& exception) {
    report(Rule::notLoadable, Position{}, "DOMException code: " + std::to_string(exception.code));
  } catch (const xercesc::OutOfMemoryException&) {
    throw std::bad_alloc();
  }
}

// Silenced first, so that what a comment silences counts as used whatever else is ignored.
bool Description::isWanted(Rule rule, const Anchor& anchor) {
  constexpr std::size_t most = 1'000;
  if (suppressions.silence(anchor.suppressions, rule) || ignoredRules.test(static_cast<std::size_t>(rule))) {
    return false;
  }
  ++warnings;
  if (warnings == most + 1 && !ignoredRules.test(static_cast<std::size_t>(Rule::moreWarnings))) {
    findings.push_back({positionOf(anchor), Rule::moreWarnings, "there are more warnings, which are not shown"});
  }
  return warnings <= most;
}

void Description::finishFindings() {
  if (!hasErrors()) {
    suppressions.forEachUnused([&](const ParserPosition& position, const std::string& why) {
      report(Rule::unusedSuppression,
             Anchor{.token = Token::comment, .position = position, .attribute = {}, .suppressions = 0},
             [&] { return "the comment silences nothing: " + why; });
    });
  }
  std::ranges::stable_sort(
      findings, {}, [](const Finding& finding) { return std::tuple(finding.position.line, finding.position.column); });
}

bool Description::hasErrors() const {
  return std::ranges::any_of(findings, [](const Finding& finding) { return isError(finding.rule); });
}

bool Description::build(jexxml::KivMaster& tree) {
  tree.document = parser->document();
  return isBuilt(diagnosticsOf([&] { jexxml::buildWithinLimit(tree, parser->memoryLeft()); }));
}

bool Description::build(jexxml::NoxMaster& tree) {
  tree.document = parser->document();
  return isBuilt(diagnosticsOf([&] { jexxml::buildNoxMaster(tree); }));
}

bool Description::isBuilt(const std::string& diagnostics) {
  const bool isLimit = diagnostics.starts_with("The file map");
  if (!diagnostics.empty()) {
    report(isLimit ? Rule::overLimit : Rule::notLoadable, Position{}, diagnostics.substr(0, diagnostics.find('\n')));
  }
  return diagnostics.empty();
}

}  // namespace tool
