#include "commands/command_line.h"

#include "io/quoting.h"
#include "io/standard_streams.h"
#include "io/terminal_text.h"
#include "release.h"

#include <qzjexxml/qzjexxml.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <iterator>

namespace tool {

Command& Command::argument(const char* name, std::string Options::*value, const char* text) {
  app->add_option(name, given->*value, text)->required()->type_name("");
  return *this;
}

Command& Command::option(const char* name, std::string Options::*value, const char* placeholder, const char* text,
                         ValidationError* validationError) {
  CLI::Option* added = app->add_option(name, given->*value, text)->type_name(placeholder);
  if (validationError != nullptr) {
    added->check(validationError);
  }
  return *this;
}

Command& Command::files() {
  app->add_option("FILE", given->files, "The files; - is the standard input")->required()->type_name("");
  return *this;
}

Command& Command::file(const char* name, const char* text) {
  app->add_option_function<std::string>(
         name, [options = given](auto& file) { options->files.push_back(file); }, text)
      ->required()
      ->type_name("");
  return *this;
}

Command& Command::flag(const char* name, bool Options::*value, const char* text, const char* excluded) {
  CLI::Option* added = app->add_flag(name, given->*value, text);
  if (excluded != nullptr) {
    added->excludes(app->get_option(excluded));
  }
  return *this;
}

Command& Command::options(const char* name, std::vector<std::string> Options::*values, const char* placeholder,
                          const char* text, ValidationError* validationError) {
  app->add_option(name, given->*values, text)->type_name(placeholder)->allow_extra_args(false)->check(validationError);
  return *this;
}

Command& Command::json() { return flag("--json", &Options::json, "Print one JSON object per file, on its own line"); }

Command& Command::force() { return flag("--force", &Options::force, "Replace an existing output"); }

static std::string fileNameError(const std::string& name) { return name.empty() ? "empty file name" : ""; }

Command& Command::output() {
  return option("-o,--output", &Options::output, "OUT", "Write to OUT atomically; - is the standard output",
                fileNameError);
}

Command& Command::passphraseFile() {
  return option("--passphrase-file", &Options::passphraseFile, "F",
                "Read the passphrase from the first line of F; - is the standard input", fileNameError);
}

CommandLine::CommandLine()
    : app(std::make_unique<CLI::App>("Read, check and encrypt the description files of the packaging tool chain.",
                                     "qzjexxml")) {
  app->set_version_flag("-V,--version", std::string("qzjexxml ") + release + ", interface " + libqzjexxml_version +
                                            " of " + libqzjexxml_build_date);
  app->require_subcommand(1);
  app->get_formatter()->label("REQUIRED", "");
  app->get_formatter()->column_width(26);
  app->footer(
      "Exit status: 0 success; 1 a file failed, or check or diff found something; 2 wrong usage.\n"
      "The rules of check: qzjexxml rules. The manual: qzjexxml(1).");
  add("help", "Show the help of a command", "help check", nullptr);  // implemented in run()
}

CommandLine::~CommandLine() = default;

Command CommandLine::add(const char* name, const char* text, const char* example,
                         ExitStatus (*command)(const Options&)) {
  CLI::App* added = app->add_subcommand(name, text);
  added->footer(std::string("Example: qzjexxml ") + example + '\n' + app->get_footer());
  added->callback([this, command] { status = command(options); });
  return {*added, options};
}

// Describes an unexpected argument.
std::string CommandLine::usageError(const std::string& argument) const {
  const bool isOption = argument.starts_with('-');
  const auto chosen = app->get_subcommands();
  const CLI::App& command = chosen.empty() ? *app : *chosen.front();
  const auto nearestOf = [&](const auto& candidates) {
    std::vector<std::string> names;
    std::ranges::transform(candidates, std::back_inserter(names), [](auto* one) { return one->get_name(); });
    return suggestion(argument, {names.begin(), names.end()});
  };
  if (isOption && command.get_option_no_throw(argument) != nullptr) {
    return "options follow the command: qzjexxml " + command.get_name() + ' ' + argument;
  }
  if (isOption) {
    return command.get_name() + " has no option " + inQuotes(argument) + nearestOf(command.get_options()) +
           " (a file of this name is ./" + argument + ")";
  }
  return chosen.empty() ? "there is no command " + inQuotes(argument) + nearestOf(app->get_subcommands({}))
                        : command.get_name() + " takes no further argument " + inQuotes(argument);
}

ExitStatus CommandLine::run(std::vector<std::string> arguments) {
  if (arguments.empty()) {
    std::cerr << app->help();
    return wrongUsage;
  }
  if (arguments.front() == "help") {
    arguments.erase(arguments.begin());
    const auto isNamed = [&](const CLI::App* command) { return command->get_name() == arguments.front(); };
    if (arguments.empty() || std::ranges::any_of(app->get_subcommands({}), isNamed)) {
      arguments.emplace_back("--help");
    }
  }
  const auto end = std::ranges::find(arguments, "--");  // of the options
  const auto isEmpty = [](const std::string& word) { return word.starts_with("--") && word.ends_with('='); };
  const auto empty = std::find_if(arguments.begin(), end, isEmpty);
  if (empty != end) {
    std::cerr << "qzjexxml: " << escapeForTerminal(*empty) << " has no value\n";
    return wrongUsage;
  }
  std::ranges::reverse(arguments);  // the order that CLI11 expects
  try {
    app->parse(arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {  // help, or the version
      app->exit(error);
      return finishOutput(allGood);
    }
    const std::vector<std::string> unexpected = app->remaining(true);
    std::cerr << "qzjexxml: " << escapeForTerminal(unexpected.empty() ? error.what() : usageError(unexpected.front()))
              << '\n';
    return wrongUsage;
  }
  return status;
}

}  // namespace tool
