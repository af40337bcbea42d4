#include "panels/db2_details.h"

#include <gtest/gtest.h>

#include "dclgen/dclgen_member.h"
#include "store/key2value_file.h"
#include "support/members.h"
#include "support/outcome.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class Db2DetailsTest : public FolderTest {
 protected:
  void SetUp() override {
    write_text("Resource/User.dat", "sourcedirectory=" + (folder_.path() / "src").string() + "/\n");
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

}  // namespace
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

}  // namespace quorva::test
