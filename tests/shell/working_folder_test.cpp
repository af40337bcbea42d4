#include "shell/working_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <cstdlib>

#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

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
