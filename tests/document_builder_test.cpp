// A document of DocumentBuilder has the same elements, in the same order, with the same attributes, as Xerces-C's own
// document; and the same errors are reported.
#include "document/document_builder.h"

#include "document/error_reporter.h"
#include "support/captured_stderr.h"
#include "text/lcp_text.h"

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <map>
#include <string>

namespace jexxml {
namespace {

using namespace xercesc;

std::string textOf(const XMLCh* string) { return std::string(LcpText(string).view()); }

std::string attributesOf(const DOMNode& element) {
  std::map<std::string, std::string> values;
  const DOMNamedNodeMap& attributes = *element.getAttributes();
  for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
    const DOMNode& attribute = *attributes.item(i);
    EXPECT_EQ(attribute.getNodeType(), DOMNode::ATTRIBUTE_NODE);
    EXPECT_EQ(attributes.getNamedItem(attribute.getNodeName()), &attribute);
    values[textOf(attribute.getNodeName())] = textOf(attribute.getNodeValue());
  }
  EXPECT_EQ(attributes.item(attributes.getLength()), nullptr);
  EXPECT_EQ(attributes.getNamedItem(u"none"), nullptr);
  std::string text;
  for (const auto& [name, value] : values) {
    text += ' ' + name + '=' + value;
  }
  return text;
}

// The elements below a node, as text.
std::string elementsIn(const DOMNode& parent) {
  std::string text;
  for (const DOMNode* child = parent.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
    if (child->getNodeType() == DOMNode::ELEMENT_NODE) {
      EXPECT_TRUE(parent.hasChildNodes());
      text += '<' + textOf(child->getNodeName()) + attributesOf(*child) + elementsIn(*child) + '>';
    }
  }
  return text;
}

const DOMNode* documentOf(XercesDOMParser& parser) { return parser.getDocument(); }
const DOMNode* documentOf(DocumentBuilder& parser) { return parser.document(); }

template <typename Parser>
std::string parsed(const std::string& document, bool withNamespaces) {
  CapturedStderr captured;
  JexXmlErrorReporter reporter;
  const MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "JexXml");
  Parser parser;
  parser.setDoNamespaces(withNamespaces);
  parser.setValidationScheme(XercesDOMParser::Val_Auto);
  parser.setCreateEntityReferenceNodes(true);
  parser.setErrorHandler(&reporter);
  parser.parse(source);
  const DOMNode* result = documentOf(parser);
  return (result == nullptr ? "" : textOf(result->getNodeName()) + elementsIn(*result)) + captured.take();
}

TEST(DocumentBuilder, MakesTheSameDocumentAsXerces) {
  const std::string entities =
      "<!DOCTYPE r [<!ELEMENT r ANY><!ELEMENT b ANY><!ATTLIST b d CDATA 'default' i ID #IMPLIED n NMTOKENS ' x  y '"
      "><!NOTATION n SYSTEM ''><!ENTITY u SYSTEM '' NDATA n><!ENTITY % p "
      "''>%p;"
      "<!ENTITY e '<b>in<b/>side</b><!-- c -->'><!ENTITY f '&e;<b d=\"1\">&e;</b>'>]>";
  const std::string documents[] = {
      "<r/>",
      "<r a=''/>",
      "<r>text<b/>text<b></b><b> </b></r>",
      "<r><b z='1' y='2' x='3' zz='' Z='&lt;&#65;'/><b b='1' a='2'/><b/><b y='1' z='2'/></r>",
      "<r><!-- first --><b/><!-- between --><?p i?><b/><![CDATA[c]]><b/><?last?></r><!-- after -->",
      "<!-- before --><?p i?><r><b><c><d/></c></b><b/></r>",
      "<r xmlns='u'><b a='1'/><c xmlns=''><d e='2'/></c><f/></r>",
      "<r xmlns:p='u'><p:b a='1' p:a='2'/><c p:d='3' e='4'><f/></c><g xmlns:q='v'><q:h/></g></r>",
      "<r xml:lang='en'><b xml:space='preserve' a=''/><b xmlns:p='u' xmlnsx='1'/><b xmlnsx='1'/></r>",
      "<r><n><n><n><n><n><b/></n></n><b/></n></n></n></r>",
      entities + "<r>&e;<b/>&f;<b i='x'/>&amp;<b n='  1 2 '/></r>",
      entities + "<r><b>&f;&e;</b>&e;<!-- c -->&e;</r>",
      "<!DOCTYPE r><r><b a='1'/></r>",
      // Documents with errors.
      "<r><b a='1' a='2'/><b/></r>",
      "<r><p:b/><b/></r>",
      "<r><b p:a='1'/></r>",
      "<r><b></c></r>",
      "<r><b/>",
      "<r/><r/>",
      "<r><b a=1/></r>",
      "<r xmlns:p=''/>",
      "<r><b>&undeclared;</b></r>",
      "<r></r></r>",
      entities + "<r><x y='1'/>&e;</r>",
      "<!DOCTYPE r [<!ENTITY e '<b>'>]><r>&e;</b></r>",
      "<!DOCTYPE r [<!ENTITY e '</r>'>]><r>&e;",
      "<!DOCTYPE r [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><r>&e;</r>",
  };
  XMLPlatformUtils::Initialize();
  for (const std::string& document : documents) {
    for (const bool withNamespaces : {true, false}) {
      EXPECT_EQ(parsed<DocumentBuilder>(document, withNamespaces), parsed<XercesDOMParser>(document, withNamespaces))
          << document.substr(0, 200);
    }
  }
  XMLPlatformUtils::Terminate();
}

}  // namespace
}  // namespace jexxml
