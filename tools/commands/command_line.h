// The command line: the commands with their options and arguments.
#pragma once

#include "io/messages.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// The options and arguments of all commands.
struct Options {
  std::vector<std::string> files;
  std::string key;  // key of an entry, or name of a rule
  std::string output;
  std::string passphraseFile;
  std::string color = "auto";
  std::vector<std::string> ignored;
  bool errorsOnly = false;
  bool force = false;
  bool json = false;
  bool tree = false;
};

// Adds options and arguments, with their help texts, to a command.
class Command {
 public:
  Command(CLI::App& added, Options& filled) : app(&added), given(&filled) {}

  // Returns what is wrong with a value, or an empty text.
  using ValidationError = std::string(const std::string& value);

  Command& files();
  Command& file(const char* name, const char* text);  // required; added to `files`
  Command& argument(const char* name, std::string Options::*value, const char* text);
  Command& flag(const char* name, bool Options::*value, const char* text, const char* excluded = nullptr);
  Command& option(const char* name, std::string Options::*value, const char* placeholder, const char* text,
                  ValidationError* validationError = nullptr);
  // May be given several times.
  Command& options(const char* name, std::vector<std::string> Options::*values, const char* placeholder,
                   const char* text, ValidationError* validationError);
  Command& json();
  Command& force();
  Command& output();
  Command& passphraseFile();

 private:
  CLI::App* app;
  Options* given;
};

class CommandLine {
 public:
  CommandLine();
  ~CommandLine();

  // `example` is an example of the command with arguments.
  Command add(const char* name, const char* text, const char* example, ExitStatus (*command)(const Options&));

  // Runs the command that the arguments name. Reports wrong usage.
  ExitStatus run(std::vector<std::string> arguments);

 private:
  std::string usageError(const std::string& argument) const;

  std::unique_ptr<CLI::App> app;
  Options options;
  ExitStatus status = allGood;
};

// Each function adds one command.
void addManifest(CommandLine& line);
void addProject(CommandLine& line);
void addCheck(CommandLine& line);
void addRules(CommandLine& line);
void addDiff(CommandLine& line);
void addExplain(CommandLine& line);
void addEncrypt(CommandLine& line);
void addDecrypt(CommandLine& line);
void addVerify(CommandLine& line);

}  // namespace tool
