// qzjexxml project: loads project descriptions, and prints their trees.
#include "commands/loading.h"
#include "project/nox_dump.h"

#include <map>
#include <utility>

namespace tool {

// Prints {"element":"data","attributes":{...},"children":[...]}. Closes the elements that do not contain the next one.
static void write(JsonWriter& json, const Description& description) {
  std::vector<std::size_t> open;
  const auto close = [&] {
    json.end().end();
    open.pop_back();
  };
  for (std::size_t i = 0; i < description.elements.size(); ++i) {
    const Element& element = description.elements[i];
    while (!open.empty() && open.back() != element.parent) {
      close();
    }
    json.beginObject().key("element").text(element.kind->name).key("attributes").beginObject();
    std::map<std::string, std::string> attributes;
    for (const AttributeKind& attribute : element.kind->attributes) {
      if (auto value = element.value(attribute.parserName.c_str())) {
        attributes.emplace(attribute.name, *std::move(value));
      }
    }
    for (const auto& [name, value] : attributes) {
      json.key(name).text(value);
    }
    json.end().key("children").beginArray();
    open.push_back(i);
  }
  while (!open.empty()) {
    close();
  }
}

static void print(const Options& options, const Description& description, jexxml::NoxMaster& /*tree*/) {
  warnOfOtherKind(description, false);
  if (options.json) {
    JsonWriter json(description.file);
    json.key("project");
    write(json, description);
  }
}

static ExitStatus project(const Options& options) {
  return printEach<jexxml::NoxMaster>(options, jexxml::dumpNoxMaster, print);
}

void addProject(CommandLine& line) {
  addLoadOptions(line.add("project", "Load project descriptions, and print them with --json or --tree",
                          "project --tree project.xml", withParser<project>));
}

}  // namespace tool
