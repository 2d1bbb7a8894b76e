// A fixture for loads of manifests. A case is one call; the line of the call identifies it.
#pragma once

#include "support/captured_stderr.h"
#include "support/scratch_directory.h"

#include <qzjexxml/qzjexxml.h>

#include <gtest/gtest.h>

#include <source_location>
#include <string>
#include <string_view>

class ManifestLoad : public testing::Test {
 protected:
  // Loads the file and returns the record, one line for each entry: "NAME = path", "source -> target", "search path".
  std::string loadFile(const char* fileName) {
    KIVData* record = nullptr;
    EXPECT_EQ(InitKIVData(fileName, &record), 1);
    std::string text;
    for (const auto& [name, path] : record->rootMacros) {
      text += name + " = " + path + '\n';
    }
    for (const auto& [source, entry] : record->fileMap) {
      text += source + " -> " + entry.target + '\n';
      EXPECT_FALSE(entry.holder.isDefault || entry.holder.owned || entry.holder.str != nullptr);
    }
    for (const auto& path : record->varnixPath) {
      text += path + '\n';
    }
    EXPECT_TRUE(record->reservedStrings.empty());
    TermKIVData(&record);
    return text;
  }

  std::string load(std::string_view document) { return loadFile(directory.write("manifest.xml", document).c_str()); }

  // Expects that the document loads into this record without messages.
  void expectRecord(std::string_view document, std::string_view record,
                    std::source_location caller = std::source_location::current()) {
    const testing::ScopedTrace trace(caller.file_name(), static_cast<int>(caller.line()), "called");
    EXPECT_EQ(load(document), record);
    EXPECT_EQ(captured.take(), "");
  }

  // Expects an empty record and these messages, and that the next good document loads.
  void expectMessages(std::string_view document, std::string_view messages,
                      std::source_location caller = std::source_location::current()) {
    const testing::ScopedTrace trace(caller.file_name(), static_cast<int>(caller.line()), "called");
    EXPECT_EQ(load(document), "");
    EXPECT_EQ(captured.take(), messages);
    expectRecord(good, "here\n");
  }

  static constexpr std::string_view good = "<any><kiv><varnixpath><data path='here'/></varnixpath></kiv></any>";

  ScratchDirectory directory;
  CapturedStderr captured;
};
