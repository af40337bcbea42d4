#include "tagfile/log.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "support/temp_folder.h"
#include "tagfile/messages.h"

namespace quorva {
namespace {

using test::read_text;
using test::TempWorkingFolder;

TEST(Log, EntriesHaveTheirByteLayout) {
  TempWorkingFolder folder;
  Crea_log(LogKind::kWarning);
  Scrivi_log("The current Client Version is:", 7, LogKind::kWarning);
  Scrivi_log_dettaglio("Tag:", "KEY", 0, 0, LogKind::kWarning);
  Scrivi_log_dettaglio("one:", "x", kNoNumber, 5, LogKind::kWarning);
  Scrivi_log_dettaglio("other:", "y", 4, kNoNumber, LogKind::kWarning);
  Scrivi_log_dettaglio("nomefile:", "f", kNoNumber, kNoNumber, LogKind::kWarning);
  EXPECT_EQ(read_text("warning.log"),
            "Quorva - Warning Log :\nWARNING :The current Client Version is:7\nWARNING :Tag:KEY00"
            "\nWARNING :one:x5\nWARNING :other:y4\nWARNING :nomefile:f");

  Scrivi_log("a", kNoNumber, LogKind::kError);
  Scrivi_log("b", kNoNumber, LogKind::kError);
  EXPECT_EQ(read_text("error.log"), "\nERROR :a-99\nERROR :b-99");

  Crea_log(LogKind::kWarning);
  Crea_log(LogKind::kWarning);
  EXPECT_EQ(read_text("warning.log"), "Quorva - Warning Log :");
}

TEST(Log, CallersFileGetsTheEntryWithoutMarkerAndIsClosed) {
  TempWorkingFolder folder;
  Scrivi_log("count:", 3, std::fopen("own.txt", "wb"));
  Scrivi_log_dettaglio("name:", "v", 1, kNoNumber, std::fopen("own2.txt", "wb"));
  EXPECT_EQ(read_text("own.txt"), "count:3");
  EXPECT_EQ(read_text("own2.txt"), "name:v1");
  Scrivi_log("lost", 1, static_cast<std::FILE*>(nullptr));
}

TEST(Log, LanguageIsExactlyEng) {
  for (const auto& [value, english] :
       {std::pair{"ENG", true}, {"eng", false}, {"ENG ", false}, {"", false}, {"ITA", false}}) {
    TempWorkingFolder folder(value);
    EXPECT_EQ(Lingua_inglese(), english) << '"' << value << '"';
    EXPECT_EQ(bilingual("yes", "si"), english ? "yes" : "si");
  }
  TempWorkingFolder no_config("");
  EXPECT_FALSE(Lingua_inglese());
}

}  // namespace
}  // namespace quorva
