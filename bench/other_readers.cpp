#include "other_readers.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <pugixml.hpp>
#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstdlib>
#include <memory>

namespace bench {
namespace {

using namespace xercesc;

std::string attributeOf(xmlNode* element, const char* name) {
  const std::unique_ptr<xmlChar, void (*)(void*)> value(xmlGetNoNsProp(element, reinterpret_cast<const xmlChar*>(name)),
                                                        xmlFree);
  return value == nullptr ? "" : reinterpret_cast<const char*>(value.get());
}

std::string attributeOf(const Attributes& attributes, const XMLCh* name) { return copyOf(attributes.getValue(name)); }

class FileMapHandler : public DefaultHandler {
 public:
  void startElement(const XMLCh* /*uri*/, const XMLCh* name, const XMLCh* /*qname*/,
                    const Attributes& attributes) override {
    if (XMLString::equals(name, u"root")) {
      rootPath = attributeOf(attributes, u"path");
    } else if (XMLString::equals(name, u"data")) {
      addFile(*record, rootPath,
              {attributeOf(attributes, u"dir_name"), attributeOf(attributes, u"file_name"),
               attributeOf(attributes, u"dir_rename"), attributeOf(attributes, u"file_rename")});
    }
  }

 private:
  std::unique_ptr<KIVData> record = std::make_unique<KIVData>();
  std::string rootPath;
};

}  // namespace

std::string copyOf(const XMLCh* text) {
  char* transcoded = XMLString::transcode(text);
  std::string copy = transcoded == nullptr ? "" : transcoded;
  XMLString::release(&transcoded);
  return copy;
}

void addFile(KIVData& record, const std::string& rootPath, const FileAttributes& file) {
  FileMapEntry& entry = record.fileMap[rootPath + "/" + file.dirName + "/" + file.fileName];
  entry.target = (file.dirRename.empty() ? file.dirName : file.dirRename) + "/" +
                 (file.fileRename.empty() ? file.fileName : file.fileRename);
  entry.holder.isDefault = false;
}

void readWithLibxml2(const std::string& path) {
  auto record = std::make_unique<KIVData>();
  const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> document(
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_HUGE | XML_PARSE_NONET | XML_PARSE_NOBLANKS), xmlFreeDoc);
  xmlNode* kiv = xmlFirstElementChild(xmlDocGetRootElement(document.get()));
  for (xmlNode* filemap = xmlFirstElementChild(kiv); filemap != nullptr; filemap = xmlNextElementSibling(filemap)) {
    for (xmlNode* root = xmlFirstElementChild(filemap); root != nullptr; root = xmlNextElementSibling(root)) {
      const std::string rootPath = attributeOf(root, "path");
      for (xmlNode* data = xmlFirstElementChild(root); data != nullptr; data = xmlNextElementSibling(data)) {
        addFile(*record, rootPath,
                {attributeOf(data, "dir_name"), attributeOf(data, "file_name"), attributeOf(data, "dir_rename"),
                 attributeOf(data, "file_rename")});
      }
    }
  }
  benchmark::DoNotOptimize(record);
}

void readWithPugixml(const std::string& path) {
  auto record = std::make_unique<KIVData>();
  pugi::xml_document document;
  if (!document.load_file(path.c_str())) {
    std::abort();
  }
  for (const pugi::xml_node filemap : document.document_element().first_child()) {
    for (const pugi::xml_node root : filemap) {
      const std::string rootPath = root.attribute("path").value();
      for (const pugi::xml_node data : root) {
        addFile(*record, rootPath,
                {data.attribute("dir_name").value(), data.attribute("file_name").value(),
                 data.attribute("dir_rename").value(), data.attribute("file_rename").value()});
      }
    }
  }
  benchmark::DoNotOptimize(record);
}

void readWithXercesSax(const std::string& path) {
  XMLPlatformUtils::Initialize();
  {
    FileMapHandler handler;
    const std::unique_ptr<SAX2XMLReader> reader(XMLReaderFactory::createXMLReader());
    reader->setContentHandler(&handler);
    const std::u16string name(path.begin(), path.end());
    reader->parse(LocalFileInputSource(name.c_str()));
  }
  XMLPlatformUtils::Terminate();
}

}  // namespace bench
