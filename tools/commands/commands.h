// The commands: each function adds one, with its options, to the command line.
#pragma once

namespace tool {

class CommandLine;

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
