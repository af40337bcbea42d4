#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "shell/main_dialog.h"
#include "shell/working_folder.h"
#include "store/config_file.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class MainDialogTest : public FolderTest {};

TEST_F(MainDialogTest, ButtonsWaitForTheUserDataThenForAProgramName) {
  const std::string complete =
      "ipaddress=10.0.0.1\ntsolibrary=USR.SRC\nsourcedirectory=/p/\npswtso=PW\ntsouser=U1\n"
      "nomecognome=Ada\nsocieta=ACME\n";
  const struct {
    std::string user;
    std::string parbase;
    bool base_parameters;
    bool generate;
  } cases[] = {
      {"", "", false, false},
      {"sourcedirectory=/p/\n", "nomeprogr=PGMA\n", false, false},
      {complete, "", true, false},
      {complete, "nomeprogr=\n", true, false},
      {complete, "nomeprogr=PGMA\n", true, true},
  };
  for (const auto& c : cases) {
    write_text("Resource/User.dat", c.user);
    write_text("temp/Parbase.dat", c.parbase);
    const MainButtons buttons = main_buttons();
    EXPECT_TRUE(buttons.user_data);
    EXPECT_EQ(buttons.base_parameters, c.base_parameters) << c.user << c.parbase;
    EXPECT_EQ(buttons.generate, c.generate) << c.user << c.parbase;
  }
  EXPECT_TRUE(ui_.messages.empty());
}

TEST_F(MainDialogTest, TipOfTheDayByLanguageRangeAndPadding) {
  EXPECT_EQ(tip_tag(7), "TIP007");
  EXPECT_EQ(tip_tag(123), "TIP123");
  write_text("Resource/Tips_ENG.txt", "TIPRANGE=2\nTIP000=zero\nTIP001=one<BR>two\nTIP002=x\n");
  write_text("Resource/Tips_ITA.txt", "TIPRANGE=0\nTIP000=zero ita\n");
  EXPECT_EQ(tip_of_the_day(4), "one\ntwo\n\n");  // 4 mod 3
  EXPECT_EQ(tip_of_the_day(3), "zero\n\n");
  write_text("Resource/QVconfig.ini", "target_language=ITA\n");
  EXPECT_EQ(tip_of_the_day(12345), "zero ita\n\n");  // TIPRANGE 0 is always TIP000
  write_text("Resource/Tips_ITA.txt", "TIP000=no range\n");
  EXPECT_FALSE(tip_of_the_day(0));
}

TEST_F(MainDialogTest, PasswordReminderOncePerMonthWhenOn) {
  write_text("Resource/QVconfig.ini", "target_language=ENG\nENABLE_PASSWORD_ALERT=OFF\n");
  EXPECT_FALSE(password_reminder(5));
  write_text("Resource/QVconfig.ini",
             "target_language=ENG\nENABLE_PASSWORD_ALERT=ON\nMONTH_PASSWORD_ALERT=4\n");
  EXPECT_FALSE(password_reminder(std::nullopt));
  const std::optional<std::string> text = password_reminder(5);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->rfind("Hi and Welcome!\nQuorva remember to you", 0), 0u);
  EXPECT_EQ(read_config(kPasswordAlertMonthKey), "5");
  EXPECT_FALSE(password_reminder(5));
}

TEST_F(MainDialogTest, TutorialRunsOnceAndOffersTheExamples) {
  const struct {
    const char* language;
    const char* question;
    bool answer;
    bool examples_there;
    const char* opened;
    const char* last_message;  // the start of the message after the four, or ""
  } cases[] = {
      {"ENG", "Do you want to open the Examples?", false, true, "", ""},
      {"ITA", "Vuoi aprire gli Esempi?", true, true, kExamplesFile, ""},
      {"ENG", "Do you want to open the Examples?", true, false, "",
       "Cannot find the following file:\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.language);
    write_text("Resource/QVconfig.ini", std::string("target_language=") + c.language + "\n");
    std::filesystem::remove(kExamplesFile);
    if (c.examples_there) write_text(kExamplesFile, "<html></html>");
    ui_.messages.clear();
    ui_.questions.clear();
    ui_.opened.clear();
    ui_.answer(c.answer);
    EXPECT_TRUE(tutorial_due());
    run_tutorial();
    ASSERT_EQ(ui_.messages.size(), *c.last_message ? 5u : 4u);
    EXPECT_EQ(ui_.messages[0].rfind(c.language == std::string("ENG") ? "Welcome" : "Benvenuto", 0),
              0u);
    if (*c.last_message) EXPECT_EQ(ui_.messages[4].rfind(c.last_message, 0), 0u);
    EXPECT_EQ(ui_.questions,
              std::vector<std::string>{std::string("Quorva Tutorial|") + c.question});
    EXPECT_EQ(ui_.opened.empty() ? "" : ui_.opened[0], std::string(c.opened));
    EXPECT_EQ(read_config(kTutorialShownKey), "ON");
    EXPECT_FALSE(tutorial_due());
  }
  // Each message has its own text in each language.
  write_text("Resource/QVconfig.ini", "target_language=ENG\n");
  const TutorialTexts english = tutorial_texts();
  write_text("Resource/QVconfig.ini", "target_language=ITA\n");
  const TutorialTexts italian = tutorial_texts();
  ASSERT_EQ(english.messages.size(), 4u);
  ASSERT_EQ(italian.messages.size(), 4u);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NE(english.messages[i], italian.messages[i]);
}

TEST_F(MainDialogTest, ExitCleanupAndHelp) {
  for (const char* file : {"temp/FtpQuorva.ini", "temp/dummy_file.txt", "warning.log", "error.log",
                           "temp/Parbase.dat"})
    write_text(file, "x");
  exit_cleanup();
  EXPECT_FALSE(std::filesystem::exists("temp/FtpQuorva.ini"));
  EXPECT_FALSE(std::filesystem::exists("temp/dummy_file.txt"));
  EXPECT_FALSE(std::filesystem::exists("warning.log"));
  EXPECT_TRUE(std::filesystem::exists("error.log"));
  EXPECT_TRUE(std::filesystem::exists("temp/Parbase.dat"));

  EXPECT_FALSE(advanced_help_file());
  ASSERT_EQ(ui_.messages.size(), 1u);
  write_text("Resource/SD_C_QV.dat", "help_avanzato_CHM=Resource/Help.html\n");
  write_text("Resource/Help.html", "<html></html>");
  Result<std::string> help = advanced_help_file();
  ASSERT_TRUE(help);
  EXPECT_EQ(*help, "Resource/Help.html");
}

// Sets an environment variable for the rest of the test, then restores it.
struct ScopedEnv {
  ScopedEnv(const char* name, const std::string& value) : name(name) {
    if (const char* was = std::getenv(name)) old = was;
    ::setenv(name, value.c_str(), 1);
  }
  ~ScopedEnv() { old ? ::setenv(name, old->c_str(), 1) : ::unsetenv(name); }
  const char* name;
  std::optional<std::string> old;
};

TEST(WorkingFolder, ChoiceOrder) {
  ScopedEnv home("QUORVA_HOME", "/from/env"), xdg("XDG_DATA_HOME", "/xdg");
  EXPECT_EQ(choose_home(std::string("/from/option")).folder, "/from/option");
  EXPECT_EQ(choose_home(std::nullopt).folder, "/from/env");
  EXPECT_EQ(choose_home(std::nullopt).source, HomeSource::kEnvironment);
  ::unsetenv("QUORVA_HOME");
  EXPECT_EQ(choose_home(std::nullopt).folder, "/xdg/quorva");
  EXPECT_EQ(choose_home(std::nullopt).source, HomeSource::kDefault);
}

TEST(WorkingFolder, InitWritesSkeletonAndRefusesAnExistingFolderUnlessForced) {
  TempWorkingFolder scratch;
  fs::path dir = scratch.path() / "home";
  ASSERT_TRUE(init_working_folder(dir, false).ok);
  EXPECT_TRUE(fs::is_directory(dir / "temp" / "default"));
  const std::string config = (dir / "Resource" / "QVconfig.ini").string();
  EXPECT_EQ(Leggi_tag(config, false, "target_language"), "ENG");
  EXPECT_EQ(Leggi_tag_int(config, false, "COBOL_BREAK_POINT"), 72);
  EXPECT_FALSE(Leggi_tag(config, false, "ALTERNATIVE_QUORMEM_FILE"));
  const std::string user = (dir / "Resource" / "User.dat").string();
  EXPECT_EQ(Leggi_tag(user, false, "sourcedirectory"), (dir / "programs").string() + "/");
  EXPECT_TRUE(fs::is_directory(dir / "programs"));
  struct stat info {};
  ASSERT_EQ(::stat(user.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);

  write_text(config, "target_language=ITA\n");
  write_text(dir / "temp" / "Parbase.dat", "nomeprogr=MINE\n");
  write_text(user, "username=ME\n");
  FolderResult again = init_working_folder(dir, false);
  EXPECT_FALSE(again.ok);
  EXPECT_NE(again.message.find("already exists"), std::string::npos);
  EXPECT_EQ(read_text(config), "target_language=ITA\n");
  ASSERT_TRUE(init_working_folder(dir, true).ok);
  EXPECT_NE(read_text(config), "target_language=ITA\n");
  EXPECT_EQ(read_text(dir / "temp" / "Parbase.dat"), "nomeprogr=MINE\n");
  EXPECT_EQ(read_text(user), "username=ME\n");
}

// A new folder defines no program; the sample is written only when asked for, and never
// over a program already defined there.
TEST(WorkingFolder, TheSampleProgramOnlyWhenAskedFor) {
  TempWorkingFolder scratch;
  const char* sample_files[] = {"temp/Parbase.dat", "temp/key2value.dat", "temp/col_select.dat",
                                "temp/Detfiles.dat", "programs/CUSTOMER.DCL"};
  const struct {
    InitContent content;
    bool defined_before;
    bool sample_written;
  } cases[] = {
      {InitContent::kEmpty, false, false},
      {InitContent::kSample, false, true},
      {InitContent::kSample, true, false},
  };
  int n = 0;
  for (const auto& c : cases) {
    const fs::path dir = scratch.path() / ("home" + std::to_string(++n));
    if (c.defined_before) write_text(dir / "temp" / "Parbase.dat", "nomeprogr=MINE\n");
    FolderResult made = init_working_folder(dir, false, c.content);
    ASSERT_TRUE(made.ok) << made.message;
    EXPECT_EQ(made.message.empty(), !c.defined_before) << made.message;
    for (const std::string file : sample_files) {
      // The members come with the sample even where the definition is kept.
      const bool expected = file.ends_with(".DCL")    ? c.content == InitContent::kSample
                            : file == sample_files[0] ? c.sample_written || c.defined_before
                                                      : c.sample_written;
      EXPECT_EQ(fs::exists(dir / file), expected) << n << " " << file;
    }
    if (c.defined_before) EXPECT_EQ(read_text(dir / "temp/Parbase.dat"), "nomeprogr=MINE\n");
    EXPECT_FALSE(fs::exists(dir / "sample")) << n;
    EXPECT_TRUE(fs::is_empty(dir / "temp" / "default")) << n;
  }
}

TEST(WorkingFolder, EnteringChecksTheInstallation) {
  TempWorkingFolder scratch;
  const fs::path base = scratch.path();
  ScopedEnv xdg("XDG_DATA_HOME", (base / "xdg").string());
  fs::create_directories(base / "bare");
  fs::create_directories(base / "named" / "Resource");
  const std::string english = "The program isn't correctly installed. Repeat the install again";
  const std::string italian = "Programma non installato correttamente. Ripetere l'installazione";

  EXPECT_EQ(enter_working_folder({base / "missing", HomeSource::kOption}).message, english);
  EXPECT_EQ(enter_working_folder({base / "bare", HomeSource::kEnvironment}).message, english);
  EXPECT_FALSE(fs::exists(base / "bare" / "Resource"));  // a named folder is never filled in

  EXPECT_TRUE(enter_working_folder({base / "named", HomeSource::kOption}).ok);
  EXPECT_EQ(fs::current_path(), base / "named");

  // First start creates the per-user folder; from then on its language speaks for broken folders.
  FolderResult created = enter_working_folder(choose_home(std::nullopt));
  ASSERT_TRUE(created.ok) << created.message;
  EXPECT_EQ(fs::current_path(), base / "xdg" / "quorva");
  write_text(base / "xdg" / "quorva" / "Resource" / "QVconfig.ini", "target_language=ITA\n");
  EXPECT_EQ(enter_working_folder({base / "bare", HomeSource::kOption}).message, italian);
}

}  // namespace
}  // namespace quorva::test
