// qzjexxml: the library's functions as commands.
#include "command_line.h"
#include "commands.h"
#include "failure.h"

#include <exception>
#include <new>

int main(int argc, char* argv[]) {
  using namespace tool;
  try {
    CommandLine line;
    for (const auto add : {addManifest, addProject, addCheck, addDiff, addExplain, addEncrypt, addDecrypt, addVerify}) {
      add(line);
    }
    return line.run({argv + 1, argv + argc});
  } catch (const Failure& failure) {
    return report(failure.subject, failure.what());
  } catch (const std::bad_alloc&) {
    return report("failed", "there is not enough memory");
  } catch (const std::exception& error) {
    return report("failed", error.what());
  }
}
