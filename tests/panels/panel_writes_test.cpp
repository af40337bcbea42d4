#include <gtest/gtest.h>

#include <functional>

#include "engine/program_definition.h"
#include "panels/advanced_options.h"
#include "panels/base_parameters.h"
#include "panels/column_selection.h"
#include "panels/db2_details.h"
#include "panels/file_details.h"
#include "panels/program_files.h"
#include "panels/user_data.h"
#include "support/faulty_disk.h"
#include "support/members.h"
#include "support/outcome.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

constexpr const char* kPassword = "S3CRET9";

class PanelWritesTest : public FolderTest {
 protected:
  void SetUp() override {
    write_text("Resource/User.dat", "sourcedirectory=" + source() + "\n");
    write_text("src/ORDERS.DCL", small_member("ORDERS", "DCLORDERS"));
    write_text("temp/Parbase.dat",
               "nomeprogr=OLDPGM\nlinguaggio=cobol\ntipoprogr=batch\nfilein=1\nfileout=1\n"
               "select=1\ndescprogr0=Old\n");
    write_text("temp/key2value.dat", "FILEIN1=OLD\nKEEP=1\n");
    write_text("temp/Detfiles.dat", "fileout_excel=0\n");
  }
  std::string source() const { return (folder_.path() / "src").string() + "/"; }
};

UserDataPanel filled_user(const std::string& folder) {
  UserDataPanel panel = UserDataPanel::open();
  panel.set_ip_address("192.0.2.10");
  panel.set_library("USER01.SOURCE");
  panel.set_source_directory(folder);
  panel.set_password(kPassword);
  panel.set_tso_user("USER01");
  panel.set_name("Mario Rossi");
  panel.set_company("Esempio");
  return panel;
}

TEST_F(PanelWritesTest, FailedWriteKeepsTheOldFileAndFails) {
  write_text("Resource/User.dat", "ipaddress=old\nsourcedirectory=" + source() + "\n");
  const struct {
    const char* file;
    std::function<bool()> ok;
  } cases[] = {
      {"temp/Parbase.dat",
       [] {
         BaseParameters panel = BaseParameters::open();
         return panel.set_name("NEWPGM") && panel.confirm().ok();
       }},
      {"temp/key2value.dat",
       [] {
         FileDetails panel = FileDetails::open(FileKind::kInput, 1);
         return panel.set_name(1, "NEWIN") && panel.confirm().ok();
       }},
      {"temp/Detfiles.dat",
       [] {
         FileDetails panel = FileDetails::open(FileKind::kOutput, 1);
         return panel.click_excel(1, true) && panel.confirm().ok();
       }},
      {"temp/key2value.dat",
       [] {
         Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 1);
         return panel.set_include(1, "ORDERS") && done(panel.confirm());
       }},
      {"Resource/QVconfig.ini",
       [] {
         Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 1);
         panel.set_autofill(true);
         return done(panel.confirm());
       }},
      {"temp/key2value.dat",
       [] {
         ColumnSelection dialog(AccessKind::kSelect, 1, "ORDERS", Selection::kQuery);
         if (!dialog.open_text(small_member("ORDERS", "DCLORDERS"))) return true;
         dialog.select_all();
         return dialog.set_structure_name("WS-ORDERS") && dialog.ok().ok();
       }},
      {"Resource/QVconfig.ini",
       [] {
         AdvancedOptions options = AdvancedOptions::open();
         options.cobol_break_point = "80";
         return options.apply().ok();
       }},
      {"Resource/User.dat", [this] { return filled_user(source()).save().ok(); }},
      {"temp/default/Parbase.dat",
       [this] {
         ui_.answer(true);
         return done(save_as_default(BaseParameters::open()));
       }},
      {"temp/Parbase.dat",
       [this] {
         write_text("temp/default/Parbase.dat", "nomeprogr=DEFPGM\n");
         ui_.answer(true);
         return done(new_program());
       }},
  };
  for (const auto& c : cases) {
    const std::string before = read_text(c.file);
    FaultyDisk full(c.file);
    EXPECT_FALSE(c.ok()) << c.file;
    EXPECT_GE(full.refused, 1) << c.file;
    EXPECT_EQ(read_text(c.file), before) << c.file;
  }
  for (const std::string& message : ui_.messages)
    EXPECT_EQ(message.find(kPassword), std::string::npos) << message;
  EXPECT_EQ(read_text("error.log").find(kPassword), std::string::npos);
}

TEST_F(PanelWritesTest, EachOkWritesEachFileOnce) {
  const struct {
    const char* file;
    std::function<void()> ok;
  } cases[] = {
      {"temp/key2value.dat",
       [] {
         FileDetails panel = FileDetails::open(FileKind::kInput, 3);
         for (int n = 1; n <= 3; ++n) panel.set_name(n, "IN" + std::to_string(n));
         EXPECT_TRUE(panel.confirm());
       }},
      {"temp/key2value.dat",
       [] {
         Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 2);
         panel.set_owner(1, "PROD");
         panel.set_include(2, "ORDERS");
         EXPECT_TRUE(done(panel.confirm()));
       }},
      {"Resource/QVconfig.ini",
       [] {
         Db2Details panel = Db2Details::open(false, AccessKind::kSelect, 1);
         panel.set_dclgen_library("PROD.DCLGEN");
         EXPECT_TRUE(done(panel.confirm()));
       }},
      {"Resource/QVconfig.ini", [] { EXPECT_TRUE(done(AdvancedOptions::open().apply())); }},
  };
  for (const auto& c : cases) {
    FaultyDisk counting(c.file, false);
    c.ok();
    EXPECT_EQ(counting.attempts, 1) << c.file;
  }
  const std::string keys = read_text("temp/key2value.dat");
  for (const char* line : {"KEEP=1\n", "FILEIN3=IN3\n", "T-1S=PROD\n", "INCLU-2S=ORDERS\n"})
    EXPECT_NE(keys.find(line), std::string::npos) << line;
}

TEST_F(PanelWritesTest, EverySetterRefusesLineBreaks) {
  using Setter = std::function<std::pair<bool, std::string>(const std::string&)>;
  BaseParameters base = BaseParameters::open();
  FileDetails files = FileDetails::open(FileKind::kInput, 1);
  Db2Details db2 = Db2Details::open(false, AccessKind::kSelect, 1);
  ColumnSelection columns(AccessKind::kSelect, 1, "ORDERS", Selection::kQuery);
  UserDataPanel user = UserDataPanel::open();
  const std::pair<const char*, Setter> setters[] = {
      {"name",
       [&](auto& t) {
         return std::pair{base.set_name(t), base.name()};
       }},
      {"file",
       [&](auto& t) {
         return std::pair{files.set_name(1, t), files.row(1).name};
       }},
      {"report",
       [&](auto& t) {
         return std::pair{files.set_report_name(1, t), files.row(1).report_name};
       }},
      {"file desc",
       [&](auto& t) {
         return std::pair{files.set_description(1, t), files.row(1).description};
       }},
      {"owner",
       [&](auto& t) {
         return std::pair{db2.set_owner(1, t), db2.row(1).owner};
       }},
      {"table",
       [&](auto& t) {
         return std::pair{db2.set_table(1, t), db2.row(1).table};
       }},
      {"cursor",
       [&](auto& t) {
         return std::pair{db2.set_cursor(1, t), db2.row(1).cursor};
       }},
      {"db2 desc",
       [&](auto& t) {
         return std::pair{db2.set_description(1, t), db2.row(1).description};
       }},
      {"include",
       [&](auto& t) {
         return std::pair{db2.set_include(1, t), db2.row(1).include};
       }},
      {"library",
       [&](auto& t) {
         return std::pair{db2.set_dclgen_library(t), db2.dclgen_library()};
       }},
      {"structure",
       [&](auto& t) {
         return std::pair{columns.set_structure_name(t), columns.structure_name()};
       }},
      {"prefix",
       [&](auto& t) {
         return std::pair{columns.set_prefix(t), columns.prefix()};
       }},
      {"ip",
       [&](auto& t) {
         return std::pair{user.set_ip_address(t), user.data().ipaddress};
       }},
      {"library",
       [&](auto& t) {
         return std::pair{user.set_library(t), user.data().tsolibrary};
       }},
      {"folder",
       [&](auto& t) {
         return std::pair{user.set_source_directory(t), user.data().sourcedirectory};
       }},
      {"password",
       [&](auto& t) {
         return std::pair{user.set_password(t), user.data().pswtso};
       }},
      {"user",
       [&](auto& t) {
         return std::pair{user.set_tso_user(t), user.data().tsouser};
       }},
      {"person",
       [&](auto& t) {
         return std::pair{user.set_name(t), user.data().nomecognome};
       }},
      {"company",
       [&](auto& t) {
         return std::pair{user.set_company(t), user.data().societa};
       }},
  };
  for (const std::string& bad :
       {std::string("AB\nX=1"), std::string("AB\rX"), std::string("AB\0X", 3), std::string("\n")}) {
    for (const auto& [field, set] : setters) {
      ASSERT_TRUE(set("OLD").first) << field;
      ui_.messages.clear();
      const auto [accepted, left] = set(bad);
      EXPECT_FALSE(accepted) << field;
      EXPECT_EQ(left, "") << field;
      ASSERT_EQ(ui_.messages.size(), 1u) << field;
      EXPECT_NE(ui_.messages[0].find("line break or a NUL"), std::string::npos) << field;
    }
  }
  // The description box's own line ends are fine; a stray carriage return or a NUL is not.
  EXPECT_TRUE(base.set_description("First line\r\nsecond line"));
  EXPECT_FALSE(base.set_description("First\rline"));
  EXPECT_FALSE(base.set_description(std::string("First\0", 6)));
  EXPECT_EQ(base.description(), "");
}

TEST_F(PanelWritesTest, MissingLanguageIsNotChosenForEveryReader) {
  write_text("temp/Parbase.dat", "nomeprogr=PGM1\nfilein=1\n");
  EXPECT_EQ(BaseParameters::open().language(), ProgramLanguage::kNone);
  EXPECT_EQ(read_program_language(), ProgramLanguage::kNone);
  const Result<ProgramDefinition> definition = read_program_definition(true);
  EXPECT_FALSE(definition);
  EXPECT_EQ(definition.message(), "Warning! Choose the Code Type!");
  write_text("temp/Parbase.dat", "nomeprogr=PGM1\nlinguaggio=easytrieve\nfilein=1\n");
  ASSERT_TRUE(read_program_definition(true));
  EXPECT_EQ(read_program_definition(true)->language, ProgramDefinition::kEasytrieve);
}

TEST_F(PanelWritesTest, ProgramNameIsAMemberName) {
  const struct {
    const char* typed;
    bool accepted;
    const char* stored;
  } cases[] = {
      {"pgm1", true, "PGM1"},     {" ab@#$ ", true, "AB@#$"},   {"", true, ""},
      {"../../x", false, "KEEP"}, {"A.B", false, "KEEP"},       {"A B", false, "KEEP"},
      {"1ABC", false, "KEEP"},    {"ABCDEFGHI", false, "KEEP"}, {"\xC8XY", false, "KEEP"},
  };
  for (const auto& c : cases) {
    BaseParameters panel = BaseParameters::open();
    ASSERT_TRUE(panel.set_name("KEEP"));
    EXPECT_EQ(panel.set_name(c.typed), c.accepted) << c.typed;
    EXPECT_EQ(panel.name(), c.stored) << c.typed;
  }
  EXPECT_NE(ui_.messages.back().find("member name"), std::string::npos);
}

TEST_F(PanelWritesTest, LongDescriptionKeepsEveryWord) {
  std::string typed;
  for (int n = 0; typed.size() < 600; ++n)
    typed += (typed.empty() ? "" : " ") + ("w" + std::to_string(n));
  typed.resize(600);
  BaseParameters panel = BaseParameters::open();
  ui_.messages.clear();  // the fixture's program has no counts: opening says so
  ASSERT_TRUE(panel.set_description(typed + "\nand a second line"));
  EXPECT_TRUE(ui_.messages.empty());
  ASSERT_TRUE(panel.confirm());

  // Written, read back and written again: every word, in order, each line within the width.
  for (int round = 0; round < 2; ++round) {
    BaseParameters again = BaseParameters::open();
    std::string stored;
    for (const std::string& line : again.description_lines()) {
      EXPECT_LE(line.size(), 57u);
      stored += (stored.empty() ? "" : " ") + line;
    }
    EXPECT_EQ(stored, typed + " and a second line");
    ASSERT_TRUE(again.confirm());
  }

  // A word longer than a line is the one thing cut, and it is said.
  const std::string word(70, 'X');
  ui_.messages.clear();
  ASSERT_TRUE(panel.set_description("short " + word));
  ASSERT_EQ(ui_.messages.size(), 1u);
  EXPECT_NE(ui_.messages[0].find("will be cut: " + word), std::string::npos) << ui_.messages[0];
}

}  // namespace
}  // namespace quorva::test
