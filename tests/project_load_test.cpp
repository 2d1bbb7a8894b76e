// Checking project descriptions through the exported functions of the shared library.
#include "support/captured_stderr.h"
#include "support/scratch_folder.h"

#include <qzjexxml/qzjexxml.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ProjectLoad, SaysOnlyWhatIsWrong) {
  const ScratchFolder folder;
  const std::string broken = folder.write("broken.xml", "<r>");
  const std::string missing = folder.path("missing.xml");
  CapturedStderr captured;
  const std::pair<std::string, std::string> files[] = {
      {EXAMPLES "/project.xml", ""},
      {broken,
       "Fatal Error at file \"JexXml\", line 1, column 4\n   Message: input ended before all started tags were ended; "
       "last tag started is 'r'\nError buiding DOM\n"},
      {missing, "Could not open file: " + missing + "\nError building input source\n"},
  };
  for (const auto& [file, messages] : files) {
    void* handle = nullptr;
    EXPECT_EQ(InitNOXData(file.c_str(), &handle), 0);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(captured.take(), messages);

    KIVData* manifest = nullptr;
    EXPECT_EQ(InitKIVData(EXAMPLES "/manifest.xml", &manifest), 1);
    EXPECT_EQ(manifest->varnixPath.size(), 3u);
    TermKIVData(&manifest);
    EXPECT_EQ(captured.take(), "");
  }
  int inUse = 0;
  void* handle = &inUse;
  EXPECT_EQ(InitNOXData(missing.c_str(), &handle), 0);
  EXPECT_EQ(handle, &inUse);
  EXPECT_EQ(captured.take(), "");
  for (int call = 0; call < 2; ++call) {
    EXPECT_EQ(TermNOXData(&handle), 1);
    EXPECT_EQ(handle, nullptr);
  }
}

}  // namespace
