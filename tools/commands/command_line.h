// The command line: the commands, and what each of them takes.
#ifndef QZJEXXML_TOOLS_COMMANDS_COMMAND_LINE_H
#define QZJEXXML_TOOLS_COMMANDS_COMMAND_LINE_H

#include "io/failure.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

// Options and arguments of one command, with the texts of its help. The values are filled before the command runs, and
// outlive the command line.
class Command {
 public:
  explicit Command(CLI::App& added) : app(&added) {}

  Command& argument(const char* name, std::string& value, const char* text);
  Command& files(std::vector<std::string>& names);
  Command& flag(const char* name, bool& value, const char* text);
  // `validationError` says what is wrong with a value, or nothing.
  Command& optional(const char* name, std::string& value, const char* text,
                    std::string (*validationError)(std::string_view value));
  // May be given several times.
  Command& options(const char* name, std::vector<std::string>& values, const char* placeholder, const char* text,
                   std::string (*validationError)(std::string_view value));
  Command& choice(const char* name, std::string& value, const char* placeholder,
                  const std::vector<std::string>& choices, const char* text);
  Command& output(std::string& file);
  Command& passphraseFile(std::string& file);
  Command& excludes(const char* name, const char* other);

 private:
  CLI::App* app;
};

class CommandLine {
 public:
  CommandLine();
  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;
  ~CommandLine();

  // `example` are arguments.
  Command add(const char* name, const char* text, const char* example, const std::function<ExitStatus()>& command);

  // Runs the command that is asked for. Wrong usage is reported.
  ExitStatus run(std::vector<std::string> arguments);

 private:
  std::string usageError(const std::string& argument) const;

  std::unique_ptr<CLI::App> app;
  ExitStatus status = allGood;
};

}  // namespace tool

#endif  // QZJEXXML_TOOLS_COMMANDS_COMMAND_LINE_H
