#include <gtest/gtest.h>

#include "store/config_file.h"
#include "store/parbase_file.h"
#include "store/program_jcl.h"
#include "store/program_name.h"
#include "store/tag_edit.h"
#include "store/tag_text.h"
#include "store/user_file.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace quorva::test {
namespace {

class StoreTest : public FolderTest {};

struct Step {
  const char* tag;
  const char* value;  // nullptr: remove
};

// One edit must leave exactly the bytes the same changes made one store call at a time
// leave, whatever odd lines the file holds.
TEST_F(StoreTest, OneEditWritesWhatSuccessiveCallsWrite) {
  const struct {
    const char* text;
    std::vector<Step> steps;
  } cases[] = {
      {"A=1\n\nB=2\n", {{"B", "3"}, {"C", "4"}}},
      {"A=1\r\nA=2\nKEY2=x\n", {{"A", nullptr}, {"KEY", "y"}}},
      {"X=1\n\n\nY=2", {{"Z", nullptr}, {"X", nullptr}, {"Y", "new=value"}}},
      {"", {{"T-1S", "PROD"}, {"T-1S", nullptr}, {"T-1S", "TEST"}}},
      {"A=1\nA =2\na=3\n", {{"A", nullptr}, {"A", nullptr}}},
  };
  for (const auto& c : cases) {
    write_text("one.dat", c.text);
    write_text("many.dat", c.text);
    TagEdit edit("one.dat");
    for (const Step& step : c.steps) {
      if (step.value) {
        edit.set(step.tag, step.value);
        ASSERT_TRUE(Modifica_tag("many.dat", false, true, step.tag, step.value));
      } else {
        edit.remove(step.tag);
        ASSERT_TRUE(Cancella_tag("many.dat", false, step.tag));
      }
    }
    ASSERT_TRUE(edit.apply(false));
    EXPECT_EQ(read_text("one.dat"), read_text("many.dat")) << c.text;
  }
}

TEST_F(StoreTest, EditRefusalsAndFailuresLeaveTheFile) {
  write_text("temp/key2value.dat", "A=1\n");
  for (const std::string& bad :
       {std::string("x\nB=2"), std::string("x\rB"), std::string("x\0B", 3)}) {
    TagEdit edit("temp/key2value.dat");
    edit.set("C", "3");
    edit.set("D", bad);
    EXPECT_FALSE(edit.apply(true));
    EXPECT_EQ(read_text("temp/key2value.dat"), "A=1\n");
  }
  FaultyDisk full("key2value");
  TagEdit edit("temp/key2value.dat");
  edit.set("C", "3");
  const Status written = edit.apply(true);
  EXPECT_FALSE(written);
  EXPECT_NE(written.message().find("No space left"), std::string::npos) << written.message();
  EXPECT_EQ(read_text("temp/key2value.dat"), "A=1\n");
}

TEST_F(StoreTest, ParbaseReadersAgree) {
  // A missing language is "not chosen" for every reader; a hand-edited name that is not a
  // member name never comes out.
  write_text("temp/Parbase.dat", "nomeprogr=../../x\nfilein=12\nfetch=-3\ndescprogr0=ONE\n");
  std::optional<ProgramRecord> record = read_parbase(false);
  ASSERT_TRUE(record);
  EXPECT_EQ(record->name, "");
  EXPECT_NE(ui_.messages.back().find("member name"), std::string::npos);
  EXPECT_EQ(record->language, ProgramLanguage::kNone);
  EXPECT_EQ(read_program_language(), ProgramLanguage::kNone);
  EXPECT_EQ(record->count(Count::kFilein), 9);
  EXPECT_EQ(read_program_count(Count::kFilein), 9);
  EXPECT_EQ(record->count(Count::kFetch), 0);
  EXPECT_EQ(record->count(Count::kSelect), kNoCount);
  EXPECT_EQ(record->count(Count::kParameters), 0);
  EXPECT_EQ(record->description, std::vector<std::string>{"ONE"});

  record->name = "PGM1";
  record->language = ProgramLanguage::kEasytrieve;
  ASSERT_TRUE(write_parbase(*record));
  EXPECT_EQ(read_parbase(false)->language, ProgramLanguage::kEasytrieve);
  record->name = "pgm1";
  EXPECT_FALSE(write_parbase(*record));
  record->name = "PGM1";
  record->description = {"A\nsecond=line"};
  EXPECT_FALSE(write_parbase(*record));
  EXPECT_EQ(read_parbase(false)->description, std::vector<std::string>{"ONE"});
}

TEST_F(StoreTest, UserDataFailureNeverShowsThePassword) {
  UserData data{"192.0.2.10", "LIB", "/tmp/", "S3CRET", "USER01", "Mario", "Esempio"};
  ASSERT_TRUE(write_user_data(data));
  const std::string before = read_text("Resource/User.dat");
  data.pswtso = "N3WPASS";
  {
    FaultyDisk full("User.dat");
    EXPECT_FALSE(write_user_data(data));
  }
  data.pswtso = "N3W\nPASS";
  EXPECT_FALSE(write_user_data(data));
  EXPECT_EQ(read_text("Resource/User.dat"), before);
  for (const std::string& seen : ui_.messages) EXPECT_EQ(seen.find("N3W"), std::string::npos);
  EXPECT_EQ(read_text("error.log").find("N3W"), std::string::npos);
}

TEST_F(StoreTest, ConfigurationDefaultsAndCounter) {
  write_text("Resource/QVconfig.ini",
             "target_language=ENG\nCOBOL_BREAK_POINT=0\n"
             "Autofill_db2=ON\nTIPS_AND_TRICKS=1\nQVjoined=41\n");
  EXPECT_EQ(read_break_point(kCobolBreak), 72);
  EXPECT_EQ(read_break_point(kDescriptionBreak), 57);
  EXPECT_TRUE(config_switch(kAutofillDb2Key));
  EXPECT_TRUE(config_switch(kTipsAndTricksKey));
  EXPECT_FALSE(config_switch(kPasswordAlertKey));
  EXPECT_EQ(template_path(), "Resource/Quormem.txt");
  Result<int> uses = UseCounterRaise().result();
  ASSERT_TRUE(uses);
  EXPECT_EQ(*uses, 42);
  FaultyDisk full("QVconfig");
  EXPECT_FALSE(UseCounterRaise().result());
  EXPECT_EQ(TagText(read_text("Resource/QVconfig.ini")).integer(kUseCounterKey), 42);
}

TEST_F(StoreTest, WindowPositionsRoundTripAndNegativeOnesAreIgnored) {
  write_text("Resource/QVconfig.ini",
             "target_language=ENG\nWindowMain_posX=-5\nWindowMain_posY=40\n"
             "WindowGenerate_posX=12\n");
  EXPECT_FALSE(read_window_position("WindowMain"));      // negative left
  EXPECT_FALSE(read_window_position("WindowGenerate"));  // top missing
  EXPECT_FALSE(read_window_position("WindowFtpData"));   // neither
  ASSERT_TRUE(save_window_position("WindowGenerate", {300, 0}));
  ASSERT_TRUE(save_window_position("WindowMain", {7, 8}));
  const std::optional<WindowPosition> kept = read_window_position("WindowGenerate");
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->x, 300);
  EXPECT_EQ(kept->y, 0);
  // Replaced where they stood, added at the end when missing; nothing else touched.
  EXPECT_EQ(read_text("Resource/QVconfig.ini"),
            "target_language=ENG\nWindowMain_posX=7\nWindowMain_posY=8\nWindowGenerate_posX=300\n"
            "WindowGenerate_posY=0\n");
  FaultyDisk full("QVconfig");
  EXPECT_FALSE(save_window_position("WindowMain", {1, 1}));
}

TEST(ProgramJcl, TheProgramAloneIsTheFileLessItsJclLines) {
  const char* jcl = "//J JOB\n//S EXEC PGM=P\n";
  const struct {
    const char* program;
    const char* jcl;
    std::optional<std::string> alone;
  } cases[] = {
      {"       PROGRAM.\n//J JOB\n//S EXEC PGM=P\n", jcl, "       PROGRAM.\n"},
      // A template may put its JCL anywhere; a program line equal to a JCL line before it
      // stays, as the JCL is matched from the end.
      {"//S EXEC PGM=P\n//J JOB\n  A.\n//S EXEC PGM=P\n  B.\n", jcl,
       "//S EXEC PGM=P\n  A.\n  B.\n"},
      {"  A.\r\n//J JOB\r\n//S EXEC PGM=P\r\n", jcl, "  A.\r\n"},
      {"  A.\n//J JOB\n//S EXEC PGM=Q\n", jcl, std::nullopt},  // edited since
      {"  A.\n", jcl, std::nullopt},                           // a JCL of another program
      {"  A.\n", "", "  A.\n"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(program_without_jcl(c.program, c.jcl), c.alone) << c.program;
}

TEST(ProgramJcl, NamesAndLibraries) {
  EXPECT_EQ(jcl_file_of("/home/u/programs/PAYROLL.txt"), "/home/u/programs/PAYROLL.jcl");
  EXPECT_EQ(jcl_file_of("/home/u.v/PAYROLL"), "/home/u.v/PAYROLL.jcl");
  for (const char* good : {"HLQ.JCL", "'USER01.PROD.JCL'", "a.b", "SYS1.PROCLIB", "A$#@-1.B"})
    EXPECT_TRUE(is_library_name(good)) << good;
  for (const char* bad :
       {"", "HLQ..JCL", "HLQ.JCL(MEMBER)", "1HLQ.JCL", "HLQ.-JCL", "HLQ JCL", "'HLQ.JCL",
        "HLQ.ABCDEFGHI", "A.B.C.D.E.F.G.H.I.J.K.L.M.N.O.P.Q.R.S.T.U.V.W"})
    EXPECT_FALSE(is_library_name(bad)) << bad;
}

}  // namespace
}  // namespace quorva::test
