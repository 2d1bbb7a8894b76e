// qzjexxml: the library's functions as commands.
#include "description_commands.h"
#include "encryption_commands.h"

#include <qzjexxml/qzjexxml.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <string>
#include <vector>

namespace {

using namespace tool;

// The options of all commands; each command uses its own.
struct Options {
  std::vector<std::string> files;
  bool json = false;
  bool tree = false;
  std::string passphraseFile;
  std::string output;
};

CLI::App* addCommand(CLI::App& app, const char* name, const char* description, Options& options) {
  CLI::App* command = app.add_subcommand(name, description);
  command->add_option("FILE", options.files, "The files")->required();
  return command;
}

CLI::App* addPassphraseCommand(CLI::App& app, const char* name, const char* description, Options& options) {
  CLI::App* command = addCommand(app, name, description, options);
  command->add_option("--passphrase-file", options.passphraseFile,
                      "Take the passphrase from the first line of this file; - is the standard input");
  return command;
}

int run(int argc, char* argv[]) {
  Options options;
  ExitStatus status = allGood;
  CLI::App app("Reads, checks and encrypts the description files of the packaging tool chain.", "qzjexxml");
  app.set_version_flag("--version",
                       std::string("qzjexxml ") + libqzjexxml_version + " (" + libqzjexxml_build_date + ")");
  app.require_subcommand(1);

  CLI::App* manifest = addCommand(app, "manifest", "Print archive manifests", options);
  CLI::Option* json = manifest->add_flag("--json", options.json, "One JSON object for each file, on a line");
  manifest->add_flag("--tree", options.tree, "The tree of elements")->excludes(json);
  manifest->callback([&] {
    status = showManifests(options.files, options.json ? Format::json : options.tree ? Format::tree : Format::table);
  });

  CLI::App* project = addCommand(app, "project", "Check project descriptions", options);
  project->add_flag("--tree", options.tree, "Print the tree of elements");
  project->callback([&] { status = checkProjects(options.files, options.tree); });

  addPassphraseCommand(app, "encrypt", "Encrypt files, each into the .enc file beside it", options)->callback([&] {
    Passphrase passphrase(options.passphraseFile, true);
    status = encryptFiles(options.files, passphrase);
  });

  CLI::App* decrypt = addPassphraseCommand(app, "decrypt", "Decrypt a file", options);
  decrypt->get_option("FILE")->expected(1);
  decrypt->add_option("-o,--output", options.output, "Write to this file instead of the standard output");
  decrypt->callback([&] {
    Passphrase passphrase(options.passphraseFile, false);
    status = decryptFile(options.files.front(), options.output, passphrase);
  });

  addPassphraseCommand(app, "verify", "Check that files decrypt", options)->callback([&] {
    Passphrase passphrase(options.passphraseFile, false);
    status = verifyFiles(options.files, passphrase);
  });

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return finishOutput(app.exit(error) == 0 ? allGood : wrongUsage);
  } catch (const NoPassphrase& error) {
    return report("passphrase", error.what());
  }
  return status;
}

}  // namespace

int main(int argc, char* argv[]) {
  std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is reported like a full disk
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return report("failed", error.what());
  }
}
