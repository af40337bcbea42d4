#include "shell/working_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <cstdlib>

#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

using test::read_text;
using test::TempWorkingFolder;
using test::write_text;

class EnvGuard {
 public:
  explicit EnvGuard(const char* name) : name_(name) {
    if (const char* v = std::getenv(name)) old_ = v;
  }
  ~EnvGuard() {
    if (old_)
      ::setenv(name_, old_->c_str(), 1);
    else
      ::unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(WorkingFolder, ChoiceOrder) {
  EnvGuard home("QUORVA_HOME"), xdg("XDG_DATA_HOME");
  ::setenv("QUORVA_HOME", "/from/env", 1);
  ::setenv("XDG_DATA_HOME", "/xdg", 1);
  EXPECT_EQ(choose_home(std::string("/from/option")).folder, "/from/option");
  EXPECT_EQ(choose_home(std::nullopt).folder, "/from/env");
  EXPECT_EQ(choose_home(std::nullopt).source, HomeSource::kEnvironment);
  ::unsetenv("QUORVA_HOME");
  EXPECT_EQ(choose_home(std::nullopt).folder, "/xdg/quorva");
  EXPECT_EQ(choose_home(std::nullopt).source, HomeSource::kDefault);
}

TEST(WorkingFolder, InitWritesSkeletonAndSourceFolder) {
  TempWorkingFolder scratch;
  fs::path dir = scratch.path() / "home";
  ASSERT_TRUE(init_working_folder(dir, false).ok);
  EXPECT_TRUE(fs::is_directory(dir / "temp" / "default"));
  EXPECT_TRUE(fs::is_directory(dir / "programs"));
  const std::string config = (dir / "Resource" / "QVconfig.ini").string();
  EXPECT_EQ(Leggi_tag(config, false, "target_language"), "ENG");
  EXPECT_EQ(Leggi_tag_int(config, false, "COBOL_BREAK_POINT"), 72);
  EXPECT_FALSE(Leggi_tag(config, false, "ALTERNATIVE_QUORMEM_FILE"));
  const std::string user = (dir / "Resource" / "User.dat").string();
  EXPECT_EQ(Leggi_tag(user, false, "sourcedirectory"), (dir / "programs").string() + "/");
  struct stat info {};
  ASSERT_EQ(::stat(user.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
}

TEST(WorkingFolder, InitRefusesAnExistingFolderUnlessForced) {
  TempWorkingFolder scratch;
  fs::path dir = scratch.path() / "home";
  ASSERT_TRUE(init_working_folder(dir, false).ok);
  write_text(dir / "Resource" / "QVconfig.ini", "target_language=ITA\n");
  write_text(dir / "temp" / "Parbase.dat", "nomeprogr=MINE\n");
  write_text(dir / "Resource" / "User.dat", "username=ME\n");
  FolderResult again = init_working_folder(dir, false);
  EXPECT_FALSE(again.ok);
  EXPECT_NE(again.message.find("already exists"), std::string::npos);
  EXPECT_EQ(read_text(dir / "Resource" / "QVconfig.ini"), "target_language=ITA\n");
  ASSERT_TRUE(init_working_folder(dir, true).ok);
  EXPECT_NE(read_text(dir / "Resource" / "QVconfig.ini"), "target_language=ITA\n");
  EXPECT_EQ(read_text(dir / "temp" / "Parbase.dat"), "nomeprogr=MINE\n");
  EXPECT_EQ(read_text(dir / "Resource" / "User.dat"), "username=ME\n");
}

TEST(WorkingFolder, EnteringChecksTheInstallation) {
  TempWorkingFolder scratch;
  EnvGuard xdg("XDG_DATA_HOME");
  const fs::path base = scratch.path();
  ::setenv("XDG_DATA_HOME", (base / "xdg").c_str(), 1);
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
}  // namespace quorva
