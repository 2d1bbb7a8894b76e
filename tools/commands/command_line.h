// The command line: the commands, and what each of them takes.
#pragma once

#include "io/messages.h"

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// What is given to a command. Each takes some of these.
struct Options {
  std::vector<std::string> files;
  std::string key;  // an entry's, or the name of a rule
  std::string output;
  std::string passphraseFile;
  std::string color = "auto";
  std::vector<std::string> ignored;
  bool errorsOnly = false;
  bool force = false;
  bool json = false;
  bool tree = false;
};

// Options and arguments of one command, with the texts of its help.
class Command {
 public:
  Command(CLI::App& added, Options& filled) : app(&added), given(&filled) {}

  // Says what is wrong with a value, or nothing.
  using ValidationError = std::string(const std::string& value);

  Command& files();
  Command& file(const char* name, const char* text);  // one of them
  Command& argument(const char* name, std::string Options::*value, const char* text);
  Command& flag(const char* name, bool Options::*value, const char* text);
  Command& option(const char* name, std::string Options::*value, const char* placeholder, const char* text,
                  ValidationError* validationError = nullptr);
  // May be given several times.
  Command& options(const char* name, std::vector<std::string> Options::*values, const char* placeholder,
                   const char* text, ValidationError* validationError);
  Command& choice(const char* name, std::string Options::*value, const char* placeholder,
                  const std::vector<std::string>& choices, const char* text);
  Command& json();
  Command& force();
  Command& output();
  Command& passphraseFile();
  Command& excludes(const char* name, const char* other);

 private:
  CLI::App* app;
  Options* given;
};

class CommandLine {
 public:
  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // `example` are arguments.
  Command add(const char* name, const char* text, const char* example, ExitStatus (*command)(const Options&));

  // Runs the command that is asked for. Wrong usage is reported.
  ExitStatus run(std::vector<std::string> arguments);

 private:
  std::string usageError(const std::string& argument) const;

  std::unique_ptr<CLI::App> app;
  Options options;
  ExitStatus status = allGood;
};

// Each adds a command with its options.
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
