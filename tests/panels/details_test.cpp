#include "panels/db2_details.h"

#include <gtest/gtest.h>

#include "dclgen/dclgen_member.h"
#include "panels/file_details.h"
#include "store/key2value_file.h"
#include "support/members.h"
#include "support/outcome.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class Db2DetailsTest : public SourceFolderTest {
 protected:
  void SetUp() override {
    SourceFolderTest::SetUp();
    write_text("src/CUSTOMER.DCL", small_member("PROD.CUSTOMER", "DCLCUSTOMER"));
    write_text("src/ORDERS.DCL", small_member("ORDERS", "DCLORDERS"));
  }
};

TEST_F(Db2DetailsTest, KeysWrittenAndRemoved) {
  Db2Details panel = Db2Details::open(false, AccessKind::kDelete, 3);
  EXPECT_EQ(panel.heading(), "Insert informations about DELETE for your Cobol program.");
  ASSERT_TRUE(panel.set_owner(3, "PROD"));
  ASSERT_TRUE(panel.set_table(3, "ORDERS"));
  ASSERT_TRUE(panel.set_cursor(3, "CURORD"));
  ASSERT_TRUE(panel.set_description(3, "Old orders"));
  ASSERT_TRUE(panel.set_include(3, "ORDERS"));
  ASSERT_TRUE(done(panel.confirm()));
  EXPECT_EQ(read_text("temp/key2value.dat"),
            "T-3D=PROD\nTABEL-3D=ORDERS\nCURS-3D=CURORD\nLEV01-3D=DCLORDERS\nINCLU-3D=ORDERS\n"
            "DESCDB2-3D=Old orders\n");
  EXPECT_NE(read_text("Resource/QVconfig.ini").find("Autofill_db2=OFF"), std::string::npos);

  Db2Details again = Db2Details::open(false, AccessKind::kDelete, 3);
  EXPECT_EQ(again.row(3).table, "ORDERS");
  ASSERT_TRUE(again.set_table(3, ""));
  ASSERT_TRUE(again.set_include(3, ""));
  ASSERT_TRUE(done(again.confirm()));
  const std::string left = read_text("temp/key2value.dat");
  for (const char* key : {"TABEL-3D", "LEV01-3D", "INCLU-3D"})
    EXPECT_EQ(left.find(key), std::string::npos) << key;
  EXPECT_NE(left.find("T-3D=PROD"), std::string::npos);
  EXPECT_NE(read_text("Resource/QVconfig.ini").find("AutoOwner_db2=OFF"), std::string::npos);
}

TEST_F(Db2DetailsTest, QuestionsAnsweredBothWays) {
  const struct {
    bool transfer_running;
    std::vector<bool> answers;
    bool closes, written;
  } cases[] = {
      {true, {false}, false, false},      // FTP check: No keeps the panel open
      {true, {true, false}, true, true},  // Yes, then No to the cursor question
      {false, {true}, false, false},      // duplicate cursors: Yes corrects them
      {false, {false}, true, true},       // No saves both
  };
  for (const auto& c : cases) {
    fs::remove("temp/key2value.dat");
    if (c.transfer_running) write_text("temp/dummy_file.txt", "");
    for (bool answer : c.answers) ui_.answer(answer);
    const std::size_t asked = ui_.questions.size();
    Db2Details panel = Db2Details::open(false, AccessKind::kFetch, 2);
    ASSERT_TRUE(panel.set_cursor(1, "C1"));
    ASSERT_TRUE(panel.set_cursor(2, "C1"));
    EXPECT_EQ(done(panel.confirm()), c.closes);
    EXPECT_EQ(ui_.questions.size() - asked, c.answers.size());
    EXPECT_EQ(fs::exists("temp/key2value.dat"), c.written);
    if (c.written) EXPECT_EQ(read_text("temp/key2value.dat"), "CURS-1F=C1\nCURS-2F=C1\n");
    EXPECT_EQ(fs::exists("temp/dummy_file.txt"), c.transfer_running && !c.closes);
    fs::remove("temp/dummy_file.txt");
  }
  EXPECT_EQ(ui_.questions[0].substr(0, 10), "FTP check|");
  EXPECT_EQ(ui_.questions.back(),
            "Internal check|You have used the same name for more than 1 cursor...\nWould you "
            "like to correct them now?");

  write_text("temp/dummy_file.txt", "");
  ui_.answer(false);
  EXPECT_FALSE(Db2Details::open(false, AccessKind::kFetch, 2).cancel());
  EXPECT_TRUE(fs::exists("temp/dummy_file.txt"));
}

TEST_F(Db2DetailsTest, AutofillAutoOwnerAndKeptDescription) {
  write_text("Resource/QVconfig.ini", "target_language=ENG\nENABLE_SAVE_DESCR_DB2=ON\n");
  Db2Details panel = Db2Details::open(true, AccessKind::kSelect, 3);
  panel.set_autofill(true);
  panel.set_auto_owner(true);
  panel.set_dclgen_library("PROD.DCLGEN.LIB");
  ASSERT_TRUE(panel.set_include(1, "CUSTOMER"));
  ASSERT_TRUE(panel.set_description(1, "Read the customer"));
  ASSERT_TRUE(panel.set_include(2, "ORDERS"));  // unqualified: no owner of its own
  ASSERT_TRUE(panel.set_table(3, "HISTORY"));
  ASSERT_TRUE(done(panel.confirm()));
  const std::string keys = read_text("temp/key2value.dat");
  for (const char* line : {"T-1S=PROD\n", "TABEL-1S=CUSTOMER\n", "LEV01-1S=DCLCUSTOMER\n",
                           "T-2S=PROD\n", "TABEL-2S=ORDERS\n", "T-3S=PROD\n", "TABEL-3S=HISTORY\n"})
    EXPECT_NE(keys.find(line), std::string::npos) << line;
  const std::string config = read_text("Resource/QVconfig.ini");
  for (const char* line :
       {"download_dclgen_lib=PROD.DCLGEN.LIB", "Autofill_db2=ON", "AutoOwner_db2=ON"})
    EXPECT_NE(config.find(line), std::string::npos) << line;

  // The description is kept in the member and comes back for a fresh program.
  EXPECT_EQ(read_kept_description("src/CUSTOMER.DCL", 'S'), "Read the customer");
  fs::remove("temp/key2value.dat");
  Db2Details fresh = Db2Details::open(true, AccessKind::kSelect, 3);
  EXPECT_EQ(fresh.row(1).description, "");
  ASSERT_TRUE(fresh.set_include(1, "CUSTOMER"));
  EXPECT_EQ(fresh.row(1).description, "Read the customer");
  EXPECT_EQ(Db2Details::open(true, AccessKind::kFetch, 1).row(1).description, "");
}

// Pointing an access at another member drops what came from the old one, and a TABLE NAME
// that is not the member's own is said, whoever typed it.
TEST_F(Db2DetailsTest, ChangingTheMemberResetsWhatBelongedToTheOldOne) {
  const struct {
    const char* table_before;  // the row's TABLE NAME before the change
    const char* include;       // the new INCLUDE
    const char* table_typed;   // typed after the change; nullptr: none
    const char* table_after;
    bool columns_kept;
    bool warned;
  } cases[] = {
      {"CUSTOMER", "ORDERS", nullptr, "ORDERS", false, false},  // follows the new member
      {"CUSTOMER", "ORDERS", "CUSTOMER", "CUSTOMER", false, true},
      {"CUSTHIST", "ORDERS", nullptr, "CUSTHIST", false, true},  // not the old member's
      {"CUSTOMER", "CUSTOMER", nullptr, "CUSTOMER", true, false},
      {"CUSTOMER", "NOSUCH", nullptr, "", false, false},  // unreadable: nothing to say
  };
  const DclgenColumn id{"ID", "S9(9) COMP.", "", db2type::kInteger, 1, 0, 0};
  for (const auto& c : cases) {
    write_text("temp/key2value.dat", std::string("T-1S=PROD\nTABEL-1S=") + c.table_before +
                                         "\nLEV01-1S=DCLCUSTOMER\nINCLU-1S=CUSTOMER\n");
    fs::remove("temp/col_select.dat");
    for (const char* master : {"SELECT1", "SELECT2"})
      ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", master, Selection::kQuery, true,
                                       "CUSTOMER", "|NAME", {id}));
    RecordingUi ui;
    Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 2);
    ASSERT_TRUE(panel.set_include(1, c.include));
    if (c.table_typed) ASSERT_TRUE(panel.set_table(1, c.table_typed));
    ASSERT_TRUE(done(panel.confirm()));
    const std::string keys = read_text("temp/key2value.dat");
    const std::string what = std::string(c.table_before) + " -> " + c.include;
    EXPECT_EQ(Db2Details::open(false, AccessKind::kSelect, 2).row(1).table, c.table_after) << what;
    const bool readable = std::string(c.include) != "NOSUCH";
    EXPECT_EQ(keys.find(std::string("LEV01-1S=DCL") + c.include) != std::string::npos, readable)
        << what << "\n"
        << keys;
    const std::string columns = read_text("temp/col_select.dat");
    EXPECT_EQ(columns.find("[SELECT1-QUERY]") != std::string::npos, c.columns_kept) << what;
    EXPECT_NE(columns.find("[SELECT2-QUERY]"), std::string::npos) << what;
    const bool warned =
        !ui.messages.empty() &&
        ui.messages.back().find("is not the table its DCLGEN member") != std::string::npos;
    EXPECT_EQ(warned, c.warned) << what;
  }
  // Columns chosen on the new member before the OK that names it stay.
  {
    write_text("temp/key2value.dat", "INCLU-1S=CUSTOMER\n");
    Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 1);
    ASSERT_TRUE(panel.set_include(1, "ORDERS"));
    ASSERT_TRUE(Riscrivi_tag_treedb2("temp/col_select.dat", "SELECT1", Selection::kQuery, true,
                                     "ORDERS", "|NAME", {id}));
    ASSERT_TRUE(done(panel.confirm()));
    EXPECT_NE(read_text("temp/col_select.dat").find("[SELECT1-QUERY]\n<ORDERS>"),
              std::string::npos);
    // So does the structure name chosen there, while the member stays.
    TagEdit chosen = key2value_edit();
    chosen.set("LEV01-1S", "WS-ORDER");
    ASSERT_TRUE(chosen.apply(false));
    Db2Details again = Db2Details::open(false, AccessKind::kSelect, 1);
    ASSERT_TRUE(again.set_owner(1, "PROD"));
    ASSERT_TRUE(done(again.confirm()));
    EXPECT_NE(read_text("temp/key2value.dat").find("LEV01-1S=WS-ORDER"), std::string::npos);
  }
  // In the person's language.
  write_text("Resource/QVconfig.ini", "target_language=ITA\n");
  RecordingUi ui;
  Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 1);
  ASSERT_TRUE(panel.set_include(1, "CUSTOMER"));
  ASSERT_TRUE(panel.set_table(1, "CUSTHIST"));
  ASSERT_TRUE(done(panel.confirm()));
  ASSERT_FALSE(ui.messages.empty());
  EXPECT_NE(ui.messages.back().find("TABLE NAME CUSTHIST di SELECT 1 non e' la tabella dichiarata "
                                    "dal suo membro DCLGEN"),
            std::string::npos)
      << ui.messages.back();
}

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

TEST_F(Db2DetailsTest, NamesTheHostRefusesAreRefused) {
  Db2Details panel = Db2Details::open(false, AccessKind::kFetch, 1);
  const struct {
    bool (Db2Details::*set)(int, const std::string&);
    std::string text;
    bool taken;
  } cases[] = {
      {&Db2Details::set_cursor, "CUR_CLIENTI", true},
      {&Db2Details::set_cursor, "CUR-1", true},
      {&Db2Details::set_cursor, "1CURSOR", false},
      {&Db2Details::set_cursor, "CUR 1", false},
      {&Db2Details::set_owner, "PROD", true},
      {&Db2Details::set_owner, "PR OD", false},
      {&Db2Details::set_table, std::string(128, 'T'), true},
      {&Db2Details::set_table, std::string(129, 'T'), false},
      {&Db2Details::set_table, "CLIENT MASTER", false},
  };
  for (const auto& c : cases) EXPECT_EQ((panel.*c.set)(1, c.text), c.taken) << c.text;
  EXPECT_EQ(panel.row(1).cursor, "CUR-1");
  EXPECT_EQ(panel.row(1).owner, "PROD");
  EXPECT_EQ(panel.row(1).table, std::string(128, 'T'));
}

}  // namespace
}  // namespace quorva::test
