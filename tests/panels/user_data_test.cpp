#include "panels/user_data.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {
namespace {

class UserDataTest : public FolderTest {};

UserDataPanel filled_panel(const std::string& folder) {
  UserDataPanel panel = UserDataPanel::open();
  panel.set_ip_address("192.0.2.10");
  panel.set_library("USER01.QUORVA.SOURCE");
  panel.set_source_directory(folder);
  panel.set_password("SECRET1");
  panel.set_tso_user("USER01");
  panel.set_name("Mario Rossi");
  panel.set_company("Esempio Srl");
  return panel;
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
  UserDataPanel panel = filled_panel(folder);
  panel.set_password("");
  EXPECT_FALSE(panel.save());
  EXPECT_EQ(read_text("Resource/User.dat"), "ipaddress=old\n");
  EXPECT_EQ(ui_.messages.back(),
            "You have not inserted all the required fields!! Please, provide all the "
            "informations...  \n\nInserted Fields: \nUser TSO\t:USER01\nPassword TSO\t:<-- \nIP "
            "address\t:192.0.2.10\nName\t\t:Mario Rossi\nCompany\t:Esempio Srl\nTSO "
            "Library\t:USER01.QUORVA.SOURCE\nProg. Directory\t:" +
                folder + "/\n");
  panel.set_password("SECRET1");
  EXPECT_NE(panel.summary().find("Password TSO\t:Ok, Password Inserted! ;)\n"), std::string::npos);
  EXPECT_EQ(panel.summary().find("SECRET1"), std::string::npos);

  EXPECT_TRUE(panel.save());
  EXPECT_EQ(
      read_text("Resource/User.dat"),
      "ipaddress=192.0.2.10\ntsolibrary=USER01.QUORVA.SOURCE\nsourcedirectory=" + folder +
          "/\npswtso=SECRET1\ntsouser=USER01\nnomecognome=Mario Rossi\nsocieta=Esempio Srl\n");
  struct stat info {};
  ASSERT_EQ(::stat("Resource/User.dat", &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);

  // A folder that cannot be used writes nothing.
  UserDataPanel bad = filled_panel("programs");
  EXPECT_FALSE(bad.save());
  EXPECT_NE(read_text("Resource/User.dat").find("sourcedirectory=" + folder), std::string::npos);
}

}  // namespace
}  // namespace quorva::test
