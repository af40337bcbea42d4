#include "panels/file_details.h"

#include <gtest/gtest.h>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

class FileDetailsTest : public FolderTest {};

std::string excel_states(const FileDetails& panel) {
  std::string states;
  for (int n = 1; n <= kDetailRows; ++n)
    states += panel.row(n).excel ? 'X' : panel.row(n).excel_enabled ? '.' : '-';
  return states;
}

TEST_F(FileDetailsTest, ExcelLockSequences) {
  // Each step: row clicked (0 = allow(k) with k given), checked, expected boxes
  // (X checked, . available, - disabled).
  const struct {
    int count;
    std::vector<std::tuple<int, bool, const char*>> clicks;
    const char* after;
    int excel;
  } cases[] = {
      {0, {}, "---------", 0},
      {4, {}, ".--------", 0},
      {4,
       {{1, true, "X.-------"}, {2, true, "XX.------"}, {1, false, ".--------"}},
       ".--------",
       0},
      {3, {{1, true, "X.-------"}, {2, true, "XX.------"}, {3, true, "XXX------"}}, "XXX------", 3},
      {9,
       {{1, true, "X.-------"},
        {2, true, "XX.------"},
        {3, true, "XXX.-----"},
        {3, false, "XX.------"}},
       "XX.------",
       2},
  };
  for (const auto& c : cases) {
    write_text("temp/Detfiles.dat", "fileout_excel=0\n");
    FileDetails panel = FileDetails::open(FileKind::kOutput, c.count);
    for (const auto& [row, checked, states] : c.clicks) {
      ASSERT_TRUE(panel.click_excel(row, checked)) << row;
      EXPECT_EQ(excel_states(panel), states) << "count " << c.count << " row " << row;
    }
    EXPECT_EQ(excel_states(panel), c.after);
    EXPECT_TRUE(panel.confirm());
    EXPECT_EQ(read_text("temp/Detfiles.dat"), "fileout_excel=" + std::to_string(c.excel) + "\n");
    // Reopening shows the same boxes.
    EXPECT_EQ(excel_states(FileDetails::open(FileKind::kOutput, c.count)), c.after);
  }

  write_text("temp/Detfiles.dat", "fileout_excel=0\n");
  FileDetails panel = FileDetails::open(FileKind::kOutput, 9);
  EXPECT_FALSE(panel.click_excel(2, true));
  ASSERT_FALSE(ui_.messages.empty());
  // Clearing a box that is neither checked nor available changes nothing and says nothing.
  const std::size_t said = ui_.messages.size();
  EXPECT_TRUE(panel.click_excel(5, false));
  EXPECT_EQ(ui_.messages.size(), said);
  for (int n = 1; n <= 9; ++n) ASSERT_TRUE(panel.click_excel(n, true));
  EXPECT_EQ(excel_states(panel), "XXXXXXXXX");
  ASSERT_TRUE(panel.click_excel(9, false));
  EXPECT_EQ(excel_states(panel), "XXXXXXXX.");
  panel.allow(0);
  EXPECT_EQ(excel_states(panel), "---------");
  EXPECT_EQ(excel_states(FileDetails::open(FileKind::kInput, 9)), "---------");
}

TEST_F(FileDetailsTest, KeysWrittenAndRemovedPerKind) {
  const struct {
    FileKind kind;
    const char* written;
  } cases[] = {
      {FileKind::kInput,
       "UIN2=CLIENTI\nFILEIN2=CLIENTI\nNOMTAB-2=RPTNAME\nDESC-I2=Customer master\n"},
      {FileKind::kOutput,
       "UOUT2=CLIENTI\nFILEOUT2=CLIENTI\nNOMTAB-2=RPTNAME\nDESC-O2=Customer master\n"},
      {FileKind::kReport, "STAMPA2=CLIENTI\nNOMTAB-2=RPTNAME\nDESC-R2=Customer master\n"},
  };
  for (const auto& c : cases) {
    std::filesystem::remove("temp/key2value.dat");
    FileDetails panel = FileDetails::open(c.kind, 2);
    ASSERT_TRUE(panel.set_name(2, "CLIENTI"));
    ASSERT_TRUE(panel.set_report_name(2, "RPTNAME"));
    ASSERT_TRUE(panel.set_description(2, "Customer master"));
    EXPECT_FALSE(panel.set_name(3, "X"));
    EXPECT_FALSE(panel.set_name(1, "TOOLONGNM"));
    EXPECT_FALSE(panel.set_report_name(1, "ABCDEFGHIJK"));
    EXPECT_FALSE(panel.set_description(1, std::string(45, 'D')));
    EXPECT_TRUE(panel.confirm());
    EXPECT_EQ(read_text("temp/key2value.dat"), c.written);

    FileDetails again = FileDetails::open(c.kind, 2);
    EXPECT_EQ(again.row(2).name, "CLIENTI");
    EXPECT_EQ(again.row(2).description, "Customer master");
    ASSERT_TRUE(again.set_name(2, ""));
    ASSERT_TRUE(again.set_report_name(2, ""));
    ASSERT_TRUE(again.set_description(2, ""));
    EXPECT_TRUE(again.confirm());
    EXPECT_EQ(read_text("temp/key2value.dat").find_first_not_of('\n'), std::string::npos);
  }

  // Rows beyond the count keep their keys; count 0 writes nothing but fileout_excel.
  write_text("temp/key2value.dat", "FILEOUT5=OLD\n");
  write_text("temp/Detfiles.dat", "fileout_excel=2\n");
  EXPECT_TRUE(FileDetails::open(FileKind::kOutput, 0).confirm());
  EXPECT_EQ(read_text("temp/key2value.dat"), "FILEOUT5=OLD\n");
  EXPECT_EQ(read_text("temp/Detfiles.dat"), "fileout_excel=0\n");

  EXPECT_FALSE(MydetailFile::scrivi_nomefile(FileKind::kInput, true, std::nullopt, 4));
  EXPECT_NE(
      read_text("error.log").find("MydetailFile - scrivi parse nomefile:Valore non valido a Null4"),
      std::string::npos);
  EXPECT_EQ(FileDetails::open(FileKind::kReport, 1).heading(),
            "Complete the informations for REPORT");
}

TEST_F(FileDetailsTest, NamesTheHostRefusesAreRefused) {
  const struct {
    const char* name;
    bool taken;
  } cases[] = {
      {"CLIENTI", true},  {"C#L@$", true},    {"clienti", false}, {"CLI-ENT", false},
      {"1CLIENT", false}, {"CLI ENT", false}, {"FILEIN2", false}, {"XUOUT3", false},
      {"FILEINX", true},  {"UIN", true},
  };
  for (const auto& c : cases) {
    FileDetails panel = FileDetails::open(FileKind::kInput, 2);
    ASSERT_TRUE(panel.set_name(1, "OLD"));
    EXPECT_EQ(panel.set_name(1, c.name), c.taken) << c.name;
    EXPECT_EQ(panel.row(1).name, c.taken ? c.name : "OLD") << c.name;
  }

  // Two rows with one DD name: OK refuses and writes nothing.
  write_text("temp/key2value.dat", "FILEIN1=KEPT\n");
  FileDetails panel = FileDetails::open(FileKind::kInput, 3);
  ASSERT_TRUE(panel.set_name(1, "CLIENTI"));
  ASSERT_TRUE(panel.set_name(3, "CLIENTI"));
  ui_.messages.clear();
  EXPECT_FALSE(panel.confirm());
  ASSERT_EQ(ui_.messages.size(), 1u);
  EXPECT_NE(ui_.messages[0].find("Rows 1 and 3"), std::string::npos) << ui_.messages[0];
  EXPECT_EQ(read_text("temp/key2value.dat"), "FILEIN1=KEPT\n");
}

}  // namespace
}  // namespace quorva::test
