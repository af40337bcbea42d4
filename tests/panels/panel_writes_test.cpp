#include <gtest/gtest.h>
#include <sys/stat.h>

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
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

constexpr const char* kPassword = "S3CRET9";

class UserDataTest : public FolderTest {};

class PanelWritesTest : public SourceFolderTest {
 protected:
  void SetUp() override {
    SourceFolderTest::SetUp();
    write_text("src/ORDERS.DCL", small_member("ORDERS", "DCLORDERS"));
    write_text("temp/Parbase.dat",
               "nomeprogr=OLDPGM\nlinguaggio=cobol\ntipoprogr=batch\nfilein=1\nfileout=1\n"
               "select=1\ndescprogr0=Old\n");
    write_text("temp/key2value.dat", "FILEIN1=OLD\nKEEP=1\n");
    write_text("temp/Detfiles.dat", "fileout_excel=0\n");
  }
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
  struct Field {
    std::function<bool(const std::string&)> set;
    std::function<std::string()> value;
  };
  BaseParameters base = BaseParameters::open();
  FileDetails files = FileDetails::open(FileKind::kInput, 1);
  Db2Details db2 = Db2Details::open(false, AccessKind::kSelect, 1);
  ColumnSelection columns(AccessKind::kSelect, 1, "ORDERS", Selection::kQuery);
  UserDataPanel user = UserDataPanel::open();
  const Field fields[] = {
      {[&](auto& t) { return base.set_name(t); }, [&] { return base.name(); }},
      {[&](auto& t) { return files.set_name(1, t); }, [&] { return files.row(1).name; }},
      {[&](auto& t) { return files.set_report_name(1, t); },
       [&] { return files.row(1).report_name; }},
      {[&](auto& t) { return files.set_description(1, t); },
       [&] { return files.row(1).description; }},
      {[&](auto& t) { return db2.set_owner(1, t); }, [&] { return db2.row(1).owner; }},
      {[&](auto& t) { return db2.set_table(1, t); }, [&] { return db2.row(1).table; }},
      {[&](auto& t) { return db2.set_cursor(1, t); }, [&] { return db2.row(1).cursor; }},
      {[&](auto& t) { return db2.set_description(1, t); }, [&] { return db2.row(1).description; }},
      {[&](auto& t) { return db2.set_include(1, t); }, [&] { return db2.row(1).include; }},
      {[&](auto& t) { return db2.set_dclgen_library(t); }, [&] { return db2.dclgen_library(); }},
      {[&](auto& t) { return columns.set_structure_name(t); },
       [&] { return columns.structure_name(); }},
      {[&](auto& t) { return columns.set_prefix(t); }, [&] { return columns.prefix(); }},
      {[&](auto& t) { return user.set_ip_address(t); }, [&] { return user.data().ipaddress; }},
      {[&](auto& t) { return user.set_library(t); }, [&] { return user.data().tsolibrary; }},
      {[&](auto& t) { return user.set_source_directory(t); },
       [&] { return user.data().sourcedirectory; }},
      {[&](auto& t) { return user.set_password(t); }, [&] { return user.data().pswtso; }},
      {[&](auto& t) { return user.set_tso_user(t); }, [&] { return user.data().tsouser; }},
      {[&](auto& t) { return user.set_name(t); }, [&] { return user.data().nomecognome; }},
      {[&](auto& t) { return user.set_company(t); }, [&] { return user.data().societa; }},
  };
  for (const std::string& bad :
       {std::string("AB\nX=1"), std::string("AB\rX"), std::string("AB\0X", 3), std::string("\n")}) {
    for (std::size_t field = 0; field < std::size(fields); ++field) {
      ASSERT_TRUE(fields[field].set("OLD")) << field;
      ui_.messages.clear();
      EXPECT_FALSE(fields[field].set(bad)) << field;
      EXPECT_EQ(fields[field].value(), "") << field;
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

TEST_F(UserDataTest, SourceDirectoryOutcomes) {
  const std::string base = folder_.path().string();
  fs::create_directory("programs");
  const struct {
    std::string typed;
    std::vector<bool> answers;
    FolderCheck outcome;
    std::string stored;
    bool created;
  } cases[] = {
      {base + "/programs", {}, FolderCheck::kExists, base + "/programs/", false},
      {base + "/newdir", {true}, FolderCheck::kCreated, base + "/newdir/", true},
      {base + "/other", {false}, FolderCheck::kDeclined, base + "/other/", false},
      {base + "/missing/child", {true}, FolderCheck::kNotCreated, base + "/missing/child/", false},
      {"programs/", {}, FolderCheck::kBadForm, "programs/", false},
      {"/tmp/a\tb", {}, FolderCheck::kInvalid, "", false},
      {"/" + std::string(230, 'a'), {}, FolderCheck::kTooLong, "/" + std::string(230, 'a'), false},
  };
  for (const auto& c : cases) {
    RecordingUi ui;
    for (bool answer : c.answers) ui.answer(answer);
    UserDataPanel panel = UserDataPanel::open();
    panel.set_source_directory(c.typed);
    EXPECT_EQ(panel.check_source_directory(), c.outcome) << c.typed;
    EXPECT_EQ(panel.data().sourcedirectory, c.stored);
    EXPECT_EQ(ui.questions.size(), c.answers.size()) << c.typed;
    if (c.created) EXPECT_TRUE(fs::is_directory(c.stored));
    EXPECT_EQ(fs::current_path(), folder_.path());
  }
}

TEST_F(UserDataTest, LimitsAndCharacterCheck) {
  UserDataPanel panel = UserDataPanel::open();
  EXPECT_FALSE(panel.set_tso_user("ABCDEFGHI"));
  EXPECT_EQ(panel.data().tsouser, "ABCDEFGH");
  EXPECT_EQ(ui_.messages.back(), "You excedeed 8 characters !!! Truncation will be applied!");
  EXPECT_FALSE(panel.set_company(std::string(31, 'C')));
  EXPECT_EQ(panel.data().societa.size(), 30u);
  EXPECT_FALSE(panel.set_name("Mario\x01"));
  EXPECT_EQ(panel.data().nomecognome, "");
  EXPECT_EQ(ui_.messages.back(),
            "Inserted Name contains invalid characters and will be discharged");
}

TEST_F(UserDataTest, SaveSummaryAndFile) {
  fs::create_directory("programs");
  const std::string folder = (folder_.path() / "programs").string();
  write_text("Resource/User.dat", "ipaddress=old\n");
  UserDataPanel panel = filled_user(folder);
  panel.set_password("");
  EXPECT_FALSE(panel.save());
  EXPECT_EQ(read_text("Resource/User.dat"), "ipaddress=old\n");
  EXPECT_EQ(ui_.messages.back(),
            "You have not inserted all the required fields!! Please, provide all the "
            "informations...  \n\nInserted Fields: \nUser TSO\t:USER01\nPassword TSO\t:<-- \nIP "
            "address\t:192.0.2.10\nName\t\t:Mario Rossi\nCompany\t:Esempio\nTSO "
            "Library\t:USER01.SOURCE\nProg. Directory\t:" +
                folder + "/\n");
  panel.set_password(kPassword);
  EXPECT_NE(panel.summary().find("Password TSO\t:Ok, Password Inserted! ;)\n"), std::string::npos);
  EXPECT_EQ(panel.summary().find(kPassword), std::string::npos);

  EXPECT_TRUE(panel.save());
  EXPECT_EQ(read_text("Resource/User.dat"),
            "ipaddress=192.0.2.10\ntsolibrary=USER01.SOURCE\nsourcedirectory=" + folder +
                "/\npswtso=" + kPassword +
                "\ntsouser=USER01\nnomecognome=Mario Rossi\nsocieta=Esempio\n");
  struct stat info {};
  ASSERT_EQ(::stat("Resource/User.dat", &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);

  // A folder that cannot be used writes nothing.
  UserDataPanel bad = filled_user("programs");
  EXPECT_FALSE(bad.save());
  EXPECT_NE(read_text("Resource/User.dat").find("sourcedirectory=" + folder), std::string::npos);
}

class AdvancedOptionsTest : public FolderTest {};

const char* kConfig = "Resource/QVconfig.ini";

TEST_F(AdvancedOptionsTest, BreakPointClamping) {
  AdvancedOptions fresh = AdvancedOptions::open();
  EXPECT_EQ(fresh.descr_break_point, "57");
  EXPECT_EQ(fresh.easytrieve_break_point, "78");
  EXPECT_EQ(fresh.cobol_break_point, "72");
  const struct {
    const char *descr, *easytrieve, *cobol;
    int stored_descr, stored_easytrieve, stored_cobol;
    std::size_t reports;
  } cases[] = {
      {"30", "60", "200", 30, 60, 200, 0},
      {"90", "78", "250", 90, 78, 200, 1},
      {"29", "201", "10", 30, 200, 60, 3},
      {"abc", "78", "72", 30, 78, 72, 1},
  };
  for (const auto& c : cases) {
    ui_.messages.clear();
    AdvancedOptions options = AdvancedOptions::open();
    options.descr_break_point = c.descr;
    options.easytrieve_break_point = c.easytrieve;
    options.cobol_break_point = c.cobol;
    EXPECT_EQ(done(options.apply()), c.reports == 0);
    EXPECT_EQ(ui_.messages.size(), c.reports) << c.cobol;
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "DESCR_BREAK_POINT"), c.stored_descr);
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "EASYTRIEVE_BREAK_POINT"), c.stored_easytrieve);
    EXPECT_EQ(Leggi_tag_int(kConfig, false, "COBOL_BREAK_POINT"), c.stored_cobol);
  }
  AdvancedOptions options = AdvancedOptions::open();
  options.default_cobol_break_point();
  options.default_descr_break_point();
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag_int(kConfig, false, "COBOL_BREAK_POINT"), 72);
  EXPECT_EQ(Leggi_tag_int(kConfig, false, "DESCR_BREAK_POINT"), 57);
}

TEST_F(AdvancedOptionsTest, AlternativeTemplateAndPasswordAlert) {
  write_text("Resource/Mine.txt", "quormem=x\n");
  write_text("Resource/Mine.dat", "quormem=x\n");
  write_text("Other.txt", "quormem=x\n");
  for (const char* refused : {"Mine.dat", "Missing.txt", "../Other.txt"}) {
    AdvancedOptions options = AdvancedOptions::open();
    options.alternative_template = refused;
    EXPECT_FALSE(done(options.apply()));
    EXPECT_EQ(options.alternative_template, "Quormem.txt");
    EXPECT_FALSE(Leggi_tag(kConfig, false, "ALTERNATIVE_QUORMEM_FILE")) << refused;
  }
  AdvancedOptions options = AdvancedOptions::open();
  EXPECT_FALSE(options.choose_template_file("Other.txt"));
  EXPECT_TRUE(options.choose_template_file("Resource/Mine.txt"));
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag(kConfig, false, "ALTERNATIVE_QUORMEM_FILE"), "Mine.txt");

  EXPECT_FALSE(options.set_password_alert(true, std::nullopt));
  EXPECT_FALSE(options.password_alert);
  EXPECT_TRUE(options.set_password_alert(true, 11));
  EXPECT_TRUE(done(options.apply()));
  EXPECT_EQ(Leggi_tag(kConfig, false, "ENABLE_PASSWORD_ALERT"), "ON");
  EXPECT_EQ(Leggi_tag(kConfig, false, "MONTH_PASSWORD_ALERT"), "11");
}

}  // namespace
}  // namespace quorva::test
