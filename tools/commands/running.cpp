#include "commands/running.h"

#include "document/xerces_session.h"
#include "io/standard_streams.h"

#include <algorithm>
#include <clocale>
#include <iostream>
#include <new>

namespace tool {

ExitStatus forEachFile(const std::vector<std::string>& files,
                       const std::function<ExitStatus(const std::string&)>& command) {
  ExitStatus status = allGood;
  for (std::size_t i = 0; i < files.size(); ++i) {
    showProgress(i + 1, files.size(), files[i]);
    try {
      status = std::max(status, command(files[i]));
    } catch (const Failure& failure) {
      status = std::max(status, report(failure.subject.empty() ? files[i] : failure.subject, failure.what()));
    } catch (const std::bad_alloc&) {
      status = std::max(status, report(files[i], "out of memory"));
    }
    std::cout.flush();  // so that a terminal shows each file when it is done
    clearProgress();
  }
  return finishOutput(status);
}

ExitStatus runWithParser(const Options& options, ExitStatus (*command)(const Options&)) {
  if (!options.json) {
    std::setlocale(LC_CTYPE, "");
  }
  const jexxml::XercesSession started;  // once, because a start takes longer than the load of a small file
  if (started.failure()) {
    throw Failure(*started.failure(), "Xerces-C");
  }
  return printTo(options.output, options.files, [&] { return command(options); });
}

}  // namespace tool
