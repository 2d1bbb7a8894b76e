// qzjexxml: the library's functions as commands.
#include "commands/command_line.h"
#include "io/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <exception>
#include <new>

// Opens closed standard streams in the wrong direction: they stay unusable, and no file gets their descriptors.
static void openStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) == -1) {
      open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);  // gets the lowest free number
    }
  }
}

int main(int argc, char* argv[]) {
  using namespace tool;
  openStandardStreams();
  const PrintedOutput standard("standard output", STDOUT_FILENO);
  try {
    CommandLine line;
    for (const auto add :
         {addManifest, addProject, addCheck, addRules, addDiff, addExplain, addEncrypt, addDecrypt, addVerify}) {
      add(line);
    }
    return line.run({argv + 1, argv + argc});
  } catch (const Failure& failure) {
    return report(failure.subject, failure.what());
  } catch (const std::bad_alloc&) {
    return report("failed", "out of memory");
  } catch (const std::exception& error) {
    return report("failed", error.what());
  }
}
