// qzjexxml: the library's functions as commands.
#include "check_command.h"
#include "compare_commands.h"
#include "description_commands.h"
#include "description_reader.h"
#include "encryption_commands.h"
#include "vocabulary.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <clocale>
#include <functional>
#include <iostream>
#include <iterator>
#include <new>
#include <string>
#include <vector>

namespace {

using namespace tool;

// The options of all commands; each command uses its own.
struct Options {
  std::vector<std::string> files;
  std::string file;
  std::string other;
  bool json = false;
  bool tree = false;
  bool force = false;
  std::string passphraseFile;
  std::string output;

  Format format() const { return json ? Format::json : tree ? Format::tree : Format::table; }
};

// Adds the commands to the command line, and what they run to do and to return.
class Commands {
 public:
  explicit Commands(CLI::App& commandLine) : app(commandLine) {
    addManifestCommands();
    addEncryptionCommands();
  }

  ExitStatus status = allGood;

 private:
  using Command = std::function<ExitStatus()>;

  CLI::App* add(const char* name, const char* description, const Command& command) {
    CLI::App* added = app.add_subcommand(name, description);
    added->callback([this, command] { status = command(); });
    return added;
  }

  void addFiles(CLI::App& command) { command.add_option("FILE", options.files, "The files")->required(); }

  void addOutput(CLI::App& command) {
    command
        .add_option("-o,--output", options.output, "Write to this file, wholly or not at all; - is the standard output")
        ->check([](const std::string& file) { return std::string(file.empty() ? "is an empty name" : ""); });
  }

  // Texts come in the locale's code page; for JSON in UTF-8, which the library gives in the "C" locale.
  CLI::App* addDescribing(const char* name, const char* description, const Command& command) {
    CLI::App* added = add(name, description, [this, command] {
      if (!options.json) {
        std::setlocale(LC_CTYPE, "");
      }
      const ParserLibrary started;
      return printTo(options.output, command);
    });
    addOutput(*added);
    return added;
  }

  void addManifestCommands() {
    CLI::App* manifest = addDescribing("manifest", "Print archive manifests",
                                       [this] { return showManifests(options.files, options.format()); });
    CLI::App* project = addDescribing("project", "Check project descriptions",
                                      [this] { return showProjects(options.files, options.format()); });
    CLI::App* check = addDescribing("check", "Say what is wrong with descriptions, and what a load would ignore",
                                    [this] { return checkFiles(options.files, options.json); });
    for (CLI::App* command : {manifest, project, check}) {
      addFiles(*command);
      command->add_flag("--json", options.json, "Print one JSON object for each file, on a line");
    }
    for (CLI::App* command : {manifest, project}) {
      command->add_flag("--tree", options.tree, "Print the tree of elements")->excludes(command->get_option("--json"));
    }
    CLI::App* diff = addDescribing("diff", "Compare the entries of two manifests",
                                   [this] { return diffManifests(options.file, options.other); });
    diff->add_option("OLD", options.file, "The manifest before")->required();
    diff->add_option("NEW", options.other, "The manifest after")->required();
    CLI::App* explain = addDescribing("explain", "Say where a root macro or file of a description is set",
                                      [this] { return explainEntry(options.file, options.other); });
    explain->add_option("FILE", options.file, "The description")->required();
    explain->add_option("KEY", options.other, "The root macro's name; the file's source or target")->required();
  }

  void addEncryptionCommands() {
    CLI::App* encrypt = add("encrypt", "Encrypt files, each into the .enc file beside it", [this] {
      return encryptFiles(options.files, options.output, options.force, options.passphraseFile);
    });
    CLI::App* decrypt = add("decrypt", "Decrypt a file",
                            [this] { return decryptFile(options.file, options.output, options.passphraseFile); });
    CLI::App* verify = add("verify", "Check that files decrypt",
                           [this] { return verifyFiles(options.files, options.passphraseFile); });
    addFiles(*encrypt);
    addFiles(*verify);
    decrypt->add_option("FILE", options.file, "The file")->required();
    encrypt->add_flag("--force", options.force, "Replace what exists");
    addOutput(*encrypt);
    addOutput(*decrypt);
    for (CLI::App* command : {encrypt, decrypt, verify}) {
      command->add_option("--passphrase-file", options.passphraseFile,
                          "Take the passphrase from the first line of this file; - is the standard input");
    }
  }

  CLI::App& app;
  Options options;
};

// Of an argument that is not expected.
std::string mistakeIn(const std::string& argument, const CLI::App& app) {
  const bool isOption = argument.starts_with('-');
  const auto chosen = app.get_subcommands();
  const CLI::App& command = chosen.empty() ? app : *chosen.front();
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back("--" + name);
    }
  }
  if (isOption) {
    return command.get_name() + " has no option " + inQuotes(argument) + suggestion(argument, names) +
           " (a file of that name is ./" + argument + ")";
  }
  if (!chosen.empty()) {
    return command.get_name() + " takes no further argument " + inQuotes(argument);
  }
  names.clear();
  std::ranges::transform(app.get_subcommands({}), std::back_inserter(names), &CLI::App::get_name);
  return "there is no command " + inQuotes(argument) + suggestion(argument, names);
}

ExitStatus run(std::vector<std::string> arguments) {
  CLI::App app("Reads, checks and encrypts the description files of the packaging tool chain.", "qzjexxml");
  app.set_version_flag("-V,--version",
                       std::string("qzjexxml ") + libqzjexxml_version + ", version of " + libqzjexxml_build_date);
  app.require_subcommand(1);
  const Commands commands(app);
  if (arguments.empty()) {
    std::cerr << app.help();
    return wrongUsage;
  }
  if (arguments.front() == "help") {
    arguments.erase(arguments.begin());
    const auto isNamed = [&](const CLI::App* command) { return command->get_name() == arguments.front(); };
    if (arguments.empty() || std::ranges::any_of(app.get_subcommands({}), isNamed)) {
      arguments.emplace_back("--help");
    }
  }
  std::ranges::reverse(arguments);  // as the parser takes them
  try {
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {  // help, or the version
      app.exit(error);
      return finishOutput(allGood);
    }
    const std::vector<std::string> unexpected = app.remaining(true);
    std::cerr << "qzjexxml: " << shown(unexpected.empty() ? error.what() : mistakeIn(unexpected.front(), app)) << '\n';
    return wrongUsage;
  }
  return commands.status;
}

}  // namespace

int main(int argc, char* argv[]) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const Failure& failure) {
    return report(failure.subject, failure.what());
  } catch (const std::bad_alloc&) {
    return report("failed", "there is not enough memory");
  } catch (const std::exception& error) {
    return report("failed", error.what());
  }
}
