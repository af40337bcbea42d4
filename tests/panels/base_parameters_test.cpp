#include "panels/base_parameters.h"

#include <gtest/gtest.h>

#include "panels/base_parameters_help.h"
#include "panels/description_wrap.h"
#include "panels/program_files.h"
#include "support/outcome.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class BaseParametersTest : public FolderTest {};
class ProgramFilesTest : public FolderTest {};

TEST_F(BaseParametersTest, WritesFullDefinitionByteForByte) {
  BaseParameters panel = BaseParameters::open();
  ASSERT_TRUE(panel.set_name(" CLIREP1"));
  panel.set_language(ProgramLanguage::kEasytrieve);
  ASSERT_TRUE(panel.set_kind(ProgramKind::kMatch));
  for (Switch s : {Switch::kConstants, Switch::kBuffering, Switch::kJcl, Switch::kCommit})
    ASSERT_TRUE(panel.set_switch(s, true));
  ASSERT_TRUE(panel.set_switch(Switch::kComments, false));
  const std::pair<Count, int> counts[] = {
      {Count::kFilein, 2}, {Count::kFileout, 1}, {Count::kReport, 3},
      {Count::kSelect, 1}, {Count::kFetch, 2},   {Count::kUpdate, 0},
      {Count::kInsert, 4}, {Count::kDelete, 9},  {Count::kParameters, 2}};
  for (auto [c, n] : counts) ASSERT_TRUE(panel.set_count(c, n));
  panel.set_description("Monthly customer report\nwith totals by branch");
  ASSERT_TRUE(panel.confirm());
  EXPECT_EQ(read_text("temp/Parbase.dat"),
            "nomeprogr=CLIREP1\nlinguaggio=easytrieve\ntipoprogr=match\ncostanti=on\n"
            "thru=off\nbuffering=on\nstream=off\ncommenti=off\njcl=on\nfilein=2\nfileout=1\n"
            "report=3\nselect=1\nfetch=2\nupdate=0\ninsert=4\ndelete=9\nrollback=off\n"
            "commit=on\nparametri=2\n"
            "descprogr0=Monthly customer report with totals by branch\n");
  EXPECT_TRUE(ui_.messages.empty());

  // Reopening gives back what was written, so OK again writes the same bytes.
  const std::string first = read_text("temp/Parbase.dat");
  ASSERT_TRUE(BaseParameters::open().confirm());
  EXPECT_EQ(read_text("temp/Parbase.dat"), first);
}

TEST_F(BaseParametersTest, DescriptionWrap) {
  const struct {
    const char* box;
    int width;
    std::vector<std::string> lines;
  } cases[] = {
      {"", 57, {}},
      {"ONE TWO THREE", 57, {"ONE TWO THREE"}},
      {"AAAA BBBB CCCC", 9, {"AAAA BBBB", "CCCC"}},
      // A word longer than the width is cut after width+1 characters; first, it leaves an
      // empty line before it.
      {"ABCDEFGHIJKL XY", 5, {"", "ABCDEF", "XY"}},
      // Later words carry their leading blank in the count; a last line over the width
      // leaves the blank that followed it as a line of its own.
      {"AB ABCDEFGHIJKL", 5, {"AB", "ABCDE", " "}},
      // An empty line gives one more blank inside the line.
      {"AB\n\nCD", 57, {"AB  CD"}},
      {"AB\r\nCD", 57, {"AB CD"}},
      {"CAF\xC8 BAR", 57, {"CAF  BAR"}},
  };
  for (const auto& c : cases) EXPECT_EQ(wrap_description(c.box, c.width), c.lines) << c.box;
  EXPECT_EQ(description_width(), 57);
  write_text("Resource/QVconfig.ini", "target_language=ENG\nDESCR_BREAK_POINT=30\n");
  EXPECT_EQ(description_width(), 30);
  write_text("Resource/QVconfig.ini", "target_language=ENG\nDESCR_BREAK_POINT=0\n");
  EXPECT_EQ(description_width(), 57);

  BaseParameters panel = BaseParameters::open();
  ASSERT_TRUE(panel.set_name("P"));
  ASSERT_TRUE(panel.confirm());
  EXPECT_NE(read_text("temp/Parbase.dat").find("descprogr0=DESCRIZIONE PROGRAMMA....\n"),
            std::string::npos);
}

TEST_F(BaseParametersTest, LanguageRules) {
  BaseParameters panel = BaseParameters::open();
  // Start values without temp/Parbase.dat.
  EXPECT_EQ(panel.language(), ProgramLanguage::kCobol);
  EXPECT_EQ(panel.kind(), ProgramKind::kBatch);
  EXPECT_TRUE(panel.switch_on(Switch::kComments));

  EXPECT_FALSE(panel.set_kind(ProgramKind::kMatch));
  EXPECT_FALSE(panel.set_count(Count::kReport, 2));
  EXPECT_FALSE(panel.set_count(Count::kFilein, 10));
  EXPECT_EQ(ui_.messages.size(), 3u);

  panel.set_language(ProgramLanguage::kEasytrieve);
  ASSERT_TRUE(panel.set_kind(ProgramKind::kMatch));
  ASSERT_TRUE(panel.set_count(Count::kReport, 2));
  EXPECT_FALSE(panel.set_switch(Switch::kThru, true));
  EXPECT_FALSE(panel.set_kind(ProgramKind::kRoutine));

  panel.set_language(ProgramLanguage::kCobol);
  EXPECT_EQ(panel.kind(), ProgramKind::kBatch);
  EXPECT_EQ(panel.count(Count::kReport), 0);
  ASSERT_TRUE(panel.set_kind(ProgramKind::kRoutine));
  ASSERT_TRUE(panel.set_switch(Switch::kThru, true));
  ASSERT_TRUE(panel.set_count(Count::kFetch, 3));

  panel.set_language(ProgramLanguage::kEasytrieve);
  EXPECT_EQ(panel.kind(), ProgramKind::kBatch);
  EXPECT_FALSE(panel.switch_on(Switch::kThru));

  panel.set_language(ProgramLanguage::kNone);
  EXPECT_FALSE(panel.switch_on(Switch::kComments));
  EXPECT_EQ(panel.count(Count::kFetch), 0);
}

TEST_F(BaseParametersTest, OkChecks) {
  BaseParameters panel = BaseParameters::open();
  ASSERT_TRUE(panel.set_name(""));
  EXPECT_FALSE(panel.confirm());
  EXPECT_EQ(ui_.messages.back(), "Warning!! You haven't inserted the Program NAME! ");
  ASSERT_TRUE(panel.set_name("ABC"));
  panel.set_language(ProgramLanguage::kNone);
  EXPECT_FALSE(panel.confirm());
  EXPECT_EQ(ui_.messages.back(), "Warning! Choose the Code Type!");
  // A match with fewer than two input files would name a FILEIN2 it never defines.
  panel.set_language(ProgramLanguage::kEasytrieve);
  ASSERT_TRUE(panel.set_kind(ProgramKind::kMatch));
  ASSERT_TRUE(panel.set_count(Count::kFilein, 1));
  EXPECT_FALSE(panel.confirm());
  EXPECT_NE(ui_.messages.back().find("reads two input files"), std::string::npos);
  EXPECT_FALSE(fs::exists("temp/Parbase.dat"));
  ASSERT_TRUE(panel.set_count(Count::kFilein, 2));
  EXPECT_TRUE(panel.confirm());
  fs::remove("temp/Parbase.dat");

  EXPECT_FALSE(panel.write(""));
  EXPECT_NE(read_text("error.log").find("Impossibile scrivere Parametri - Dest file a NULL:"),
            std::string::npos);
}

TEST_F(BaseParametersTest, QuickHelpAndInformation) {
  write_text("temp/Parbase.dat",
             "nomeprogr=PGM1\nlinguaggio=cobol\ntipoprogr=routine\ncostanti=on\nthru=on\n"
             "commenti=on\nfilein=1\nfileout=2\nreport=0\nselect=3\nfetch=0\nupdate=0\n"
             "insert=0\ndelete=1\ncommit=on\ndescprogr0=X\n");
  write_text("temp/Flags.dat", "FlagsColl_01=a\nFlagsColl_02=b\n");
  write_text("temp/customused.dat", "Custom_code_1=a\n");
  write_text("Resource/Quormem.txt", "quormem=QV-1.33\nnumlines=4210\n");
  BaseParameters panel = BaseParameters::open();
  EXPECT_EQ(quick_help_summary(panel),
            "To obtain a quick help refer to the button below ...\nNow follow the current User "
            "choices : \nLanguage:\tCobol\t ->PGM1<-\n\n[CONSTANTS][COMMENTS][THRU]\nTipo "
            "Prg:\tRoutine\nTot. Filein:\t1 Tot. Fileout:\t2 Tot. Report:\t0 \nTot. Select:\t3 "
            "Tot. Fetch:\t0 Tot. Update:\t0 Tot. Insert:\t0 Tot. Delete:\t1 [COMMIT]\nTot. "
            "Sysin:\t0 ");
  ProgramInformation info = program_information();
  EXPECT_EQ(info.custom_codes, 1);
  EXPECT_EQ(info.flag_collections, 2);
  EXPECT_EQ(info.key2value_collections, 0);
  EXPECT_EQ(info.template_name, "QV-1.33");
  EXPECT_EQ(info.template_lines, "4210");
}

TEST_F(ProgramFilesTest, NewProgramAndSaveAsDefault) {
  for (const char* file : new_program_deleted_files()) write_text(file, "old=1\n");
  write_text("temp/Flags.dat", "FlagsColl_01=x\n");

  ui_.answer(false);
  EXPECT_FALSE(done(new_program()));
  EXPECT_TRUE(fs::exists("temp/Parbase.dat"));
  EXPECT_EQ(ui_.questions.back().substr(0, 15), "Erasing Fields|");

  // No defaults: everything but Flags.dat goes.
  ui_.answer(true);
  EXPECT_TRUE(done(new_program()));
  for (const char* file : new_program_deleted_files()) EXPECT_FALSE(fs::exists(file)) << file;
  EXPECT_EQ(read_text("temp/Flags.dat"), "FlagsColl_01=x\n");

  // Save as Default writes the panel (not a copy), names it PROGNAME when unnamed and
  // copies the other program files that exist.
  write_text("temp/key2value.dat", "FILEIN1=CLIENTI\n");
  BaseParameters panel = BaseParameters::open();
  ui_.answer(false);
  EXPECT_FALSE(done(save_as_default(panel)));
  EXPECT_FALSE(fs::exists("temp/default/Parbase.dat"));
  ui_.answer(true);
  EXPECT_TRUE(done(save_as_default(panel)));
  EXPECT_EQ(read_text("temp/default/Parbase.dat").substr(0, 40),
            "nomeprogr=PROGNAME\nlinguaggio=cobol\ntipo");
  EXPECT_EQ(read_text("temp/default/key2value.dat"), "FILEIN1=CLIENTI\n");
  EXPECT_EQ(read_text("temp/default/Flags.dat"), "FlagsColl_01=x\n");
  EXPECT_FALSE(fs::exists("temp/default/FtpQuorva.ini"));
  EXPECT_EQ(ui_.messages.back().substr(0, 28), "DEFAULT CONFIGURATION saved!");

  // NEW restores the defaults over temp/.
  write_text("temp/key2value.dat", "FILEIN1=OTHER\n");
  write_text("temp/Flags.dat", "FlagsColl_01=y\n");
  ui_.answer(true);
  EXPECT_TRUE(done(new_program()));
  EXPECT_EQ(read_text("temp/key2value.dat"), "FILEIN1=CLIENTI\n");
  EXPECT_EQ(read_text("temp/Flags.dat"), "FlagsColl_01=x\n");
  EXPECT_EQ(BaseParameters::open().name(), "PROGNAME");
}

}  // namespace
}  // namespace quorva::test
