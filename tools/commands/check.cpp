// qzjexxml check: reports what keeps descriptions from loading, and what a load would silently ignore or override.
#include "commands/command_line.h"
#include "commands/running.h"
#include "description/description.h"
#include "description/entries.h"
#include "io/quoting.h"
#include "io/terminal_text.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace tool {

// A target "/FILE" does not count, because a record has this target for a file without a directory.
static bool leadsOut(const std::string& target) {
  return (target.starts_with('/') && target.find('/', 1) != std::string::npos) ||
         ("/" + target + "/").find("/../") != std::string::npos;
}

// Reports overridden entries, stray and shared targets, and relative paths.
static void checkEntries(Description& description) {
  for (const Entry& entry : entriesOf(description)) {
    const Anchor tag = entry.element->tag();
    if (entry.overrides != nullptr && !entry.key.empty()) {
      description.report(Rule::overriddenEntry, tag, [&] {
        return (entry.isFile() ? "source " : "root macro ") + inQuotes(entry.key) + " overrides the entry at " +
               description.placeOf(entry.overrides->element->tag());
      });
    }
    if (entry.isFile() && leadsOut(entry.value)) {
      description.report(Rule::strayTarget, tag,
                         [&] { return "target " + inQuotes(entry.value) + " may lead outside the restore directory"; });
    }
    if (entry.sameTarget != nullptr) {
      description.report(Rule::sharedTarget, tag, [&] {
        return "target " + inQuotes(entry.value) + " is also the target of " + inQuotes(entry.sameTarget->key) +
               " at " + description.placeOf(entry.sameTarget->element->tag());
      });
    }
    if (entry.kind == Entry::Kind::rootMacro && !entry.value.empty() && !entry.value.starts_with('/')) {
      description.report(Rule::relativePath, entry.element->attribute(u"abspath"),
                         [&] { return "abspath " + inQuotes(entry.value) + " is not absolute"; });
    }
  }
}

static void checkType(Description& description) {
  const Element& root = description.elements.front();
  const std::string type = root.value(u"type").value_or("");
  const std::vector<std::string_view> types = {"archive", "project"};
  if (!type.empty() && type != types[description.isManifest() ? 0 : 1]) {
    description.report(Rule::wrongType, root.attribute(u"type"), [&] {
      return "the type is " + inQuotes(type) +
             (type != types[description.isManifest() ? 1 : 0] ? ", which is unknown" + suggestion(type, types)
              : description.isManifest()                      ? ", but the file is an archive manifest"
                                                              : ", but the file is a project description");
    });
  }
}

static void print(const Finding& finding, const Description& description, bool isColored) {
  const auto in = [&](const char* color, const std::string& text) {
    return isColored ? "\033[" + std::string(color) + 'm' + text + "\033[m" : text;
  };
  const bool error = isError(finding.rule);
  std::cout << in("1", escapeForTerminal(description.placeOf(finding.position)) + ':') << ' '
            << in(error ? "1;31" : "1;35", error ? "error:" : "warning:") << ' ' << escapeForTerminal(finding.text)
            << " [" << nameOf(finding.rule) << "]\n";
}

static std::string colorError(const std::string& when) {
  return when == "auto" || when == "always" || when == "never" ? "" : inQuotes(when) + " is not auto, always or never";
}

// By default, only a terminal gets colors, unless NO_COLOR or TERM forbids them.
static bool isColored(const Options& options) {
  const char* refusal = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return options.color == "always" ||
         (options.color == "auto" && (options.output.empty() || options.output == "-") && isatty(STDOUT_FILENO) == 1 &&
          (refusal == nullptr || *refusal == '\0') && terminal != nullptr && std::string_view(terminal) != "dumb");
}

// Prints each finding as "FILE:LINE:COLUMN: error: TEXT [RULE]" or "...: warning: ...", or each file as a JSON object.
// Returns fileFailed if there is a finding.
static ExitStatus check(const Options& options) {
  Rules ignored = options.errorsOnly ? Rules().set() : Rules();
  for (const std::string& name : options.ignored) {
    ignored.set(static_cast<std::size_t>(*ruleNamed(name)));
  }
  const bool inColors = isColored(options);
  return forEachFile(options.files, [&](const std::string& file) {
    Description description(file, ignored);
    if (!description.hasErrors()) {
      checkType(description);
      checkEntries(description);
    }
    description.finishFindings();
    if (options.json) {
      JsonWriter json(file);
      if (description.fileSize() != 0) {  // a file that was not read has no kind
        json.key("kind").text(description.isManifest() ? "manifest" : "project");
      }
      json.key("findings");
      description.writeFindings(json);
    } else {
      for (const Finding& finding : description.findings) {
        print(finding, description, inColors);
      }
    }
    return description.findings.empty() ? allGood : fileFailed;
  });
}

void addCheck(CommandLine& line) {
  line.add("check", "Report errors, and everything that a load would silently ignore",
           "check --ignore stray-target manifest.xml", withParser<check>)
      .files()
      .output()
      .json()
      .options("--ignore", &Options::ignored, "RULE", "Turn off the warnings of RULE; may be given several times",
               ignoreError)
      .flag("--errors-only", &Options::errorsOnly, "Report only errors")
      .option("--color", &Options::color, "WHEN", "Color the output: auto (on a terminal), always or never",
              colorError);
}

}  // namespace tool
