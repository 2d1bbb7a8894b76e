// Checking project descriptions through the exported functions of the shared library.
#include "support/manifest_load.h"

#include <string>

namespace {

class ProjectLoad : public ManifestLoad {
 protected:
  // A manifest load comes after, which nothing of the project's reaches.
  void expectProjectMessages(const std::string& file, const std::string& messages) {
    void* handle = nullptr;
    EXPECT_EQ(InitNOXData(file.c_str(), &handle), 0);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(captured.take(), messages);
    expectRecord(good, "here\n");
  }
};

TEST_F(ProjectLoad, SaysOnlyWhatIsWrong) {
  expectProjectMessages(EXAMPLES "/project.xml", "");
  expectProjectMessages(folder.write("broken.xml", "<r>"),
                        "Fatal Error at file \"JexXml\", line 1, column 4\n   Message: input ended before all started "
                        "tags were ended; last tag started is 'r'\nError buiding DOM\n");
  expectProjectMessages("missing", "Could not open file: missing\nError building input source\n");
}

TEST_F(ProjectLoad, LeavesAHandleInUseToItsTerm) {
  void* handle = this;
  EXPECT_EQ(InitNOXData("missing", &handle), 0);
  EXPECT_EQ(handle, this);
  EXPECT_EQ(captured.take(), "");
  for (int call = 0; call < 2; ++call) {
    EXPECT_EQ(TermNOXData(&handle), 1);
    EXPECT_EQ(handle, nullptr);
  }
}

}  // namespace
