#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <set>
#include <string>
#include <thread>

#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "tagfile/folder_lock.h"
#include "tagfile/tag_file.h"

namespace quorva::test {
namespace {

class Store : public FolderTest {};

unsigned mode_of(const char* file) {
  struct stat st {};
  ::stat(file, &st);
  return st.st_mode & 0777;
}

struct WriteCase {
  const char* name;
  std::function<Status()> write;
};

const WriteCase kWrites[] = {
    {"modify", [] { return Modifica_tag("t.dat", true, true, "A", "9"); }},
    {"delete", [] { return Cancella_tag("t.dat", true, "A"); }},
    {"append", [] { return Appendi_tag("t.dat", true, "C", "3"); }},
    {"append number", [] { return Appendi_tag_int("t.dat", true, "C", 3); }},
    {"create", [] { return Crea_file("t.dat", true); }},
    {"copy over", [] { return Copia_file(true, "other.dat", "t.dat"); }},
    {"whole text", [] { return Scrivi_file("t.dat", true, "Z=1\n"); }},
};

TEST_F(Store, AFullDiskLeavesTheOldFileAndSaysSo) {
  for (const WriteCase& c : kWrites) {
    write_text("t.dat", "A=1\nB=2\n");
    write_text("other.dat", "X=1\n");
    ui_.messages.clear();
    FaultyDisk full("t.dat");
    const Status written = c.write();
    EXPECT_FALSE(written.ok()) << c.name;
    EXPECT_NE(written.message().find("t.dat"), std::string::npos) << c.name << written.message();
    EXPECT_EQ(read_text("t.dat"), "A=1\nB=2\n") << c.name;
    EXPECT_EQ(ui_.messages.size(), 1u) << c.name;
    EXPECT_EQ(full.refused, 1) << c.name;
  }
  // Nothing is left behind under a temporary name either.
  for (const auto& entry : std::filesystem::directory_iterator("."))
    EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos) << entry.path();
}

TEST_F(Store, APasswordThatCannotBeWrittenIsInNoLog) {
  write_text("Resource/User.dat", "pswtso=OLD\n");
  FaultyDisk full("User.dat");
  EXPECT_FALSE(Modifica_tag("Resource/User.dat", true, true, "pswtso", "S3CRET").ok());
  EXPECT_FALSE(Appendi_tag("Resource/User.dat", true, "pswtso", "S3CRET").ok());
  const std::string log = read_text("error.log");
  EXPECT_NE(log.find("Resource/User.dat"), std::string::npos);
  EXPECT_EQ(log.find("S3CRET"), std::string::npos);
  for (const std::string& message : ui_.messages)
    EXPECT_EQ(message.find("S3CRET"), std::string::npos);
}

TEST_F(Store, AReadOnlyFileStaysAsItIs) {
  write_text("t.dat", "A=1\nB=2\n");
  write_text("other.dat", "X=1\n");
  ::chmod("t.dat", 0444);
  for (const WriteCase& c : kWrites) {
    EXPECT_FALSE(c.write().ok()) << c.name;
    EXPECT_EQ(read_text("t.dat"), "A=1\nB=2\n") << c.name;
    EXPECT_EQ(mode_of("t.dat"), 0444u) << c.name;
  }
}

TEST_F(Store, AReadOnlyFolderIsRefused) {
  if (::geteuid() == 0) GTEST_SKIP() << "root writes into read-only folders";
  write_text("ro/t.dat", "A=1\n");
  ::chmod("ro", 0555);
  EXPECT_FALSE(Modifica_tag("ro/t.dat", true, true, "A", "2").ok());
  EXPECT_FALSE(Scrivi_file("ro/t.dat", true, "A=2\n").ok());
  ::chmod("ro", 0755);
  EXPECT_EQ(read_text("ro/t.dat"), "A=1\n");
}

TEST_F(Store, ReplacementKeepsTheFilesPermissions) {
  write_text("Resource/User.dat", "pswtso=OLD\n");
  ::chmod("Resource/User.dat", 0600);
  ASSERT_TRUE(Modifica_tag("Resource/User.dat", true, true, "pswtso", "NEW").ok());
  ASSERT_TRUE(Scrivi_file("Resource/User.dat", true, "pswtso=NEWER\n").ok());
  EXPECT_EQ(mode_of("Resource/User.dat"), 0600u);
  EXPECT_EQ(read_text("Resource/User.dat"), "pswtso=NEWER\n");
}

TEST_F(Store, LineBreaksAndNulsNeverReachAFile) {
  const std::string values[] = {"x\nSECOND=INJECTED", "1.2.3.4\rsourcedirectory=/tmp/",
                                std::string("a\0b", 3), "\n"};
  for (const std::string& value : values) {
    write_text("t.dat", "A=1\n");
    ui_.messages.clear();
    EXPECT_FALSE(Modifica_tag("t.dat", true, true, "A", value).ok());
    EXPECT_FALSE(Appendi_tag("t.dat", true, "B", value).ok());
    EXPECT_FALSE(Modifica_tag("t.dat", true, true, "A\nB", "1").ok());
    EXPECT_FALSE(valid_tag_value(true, "descprogr0", value));
    EXPECT_EQ(read_text("t.dat"), "A=1\n");
    ASSERT_EQ(ui_.messages.size(), 4u);
    EXPECT_EQ(ui_.messages[0], line_break_message("A"));
  }
}

// Each writer adds its own keys to one file, over and over, the way two front ends
// change different fields of the same program at once.
void add_keys(const std::string& who, int count) {
  for (int i = 0; i < count; ++i)
    ASSERT_TRUE(Modifica_tag("temp/key2value.dat", false, true, who + std::to_string(i), "v").ok());
}

std::set<std::string> tags_of(const std::string& text) {
  std::set<std::string> tags;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    tags.insert(text.substr(start, text.find('=', start) - start));
    start = end + 1;
  }
  return tags;
}

TEST_F(Store, TwoProcessesWritingOneFileLoseNothing) {
  constexpr int kWrites = 300;
  write_text("temp/key2value.dat", "");
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    for (int i = 0; i < kWrites; ++i)
      if (!Modifica_tag("temp/key2value.dat", false, true, "CHILD" + std::to_string(i), "v"))
        ::_exit(1);
    ::_exit(0);
  }
  add_keys("PARENT", kWrites);
  int status = 0;
  ::waitpid(child, &status, 0);
  ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  const std::set<std::string> tags = tags_of(read_text("temp/key2value.dat"));
  EXPECT_EQ(tags.size(), 2u * kWrites);
  for (int i = 0; i < kWrites; ++i) {
    EXPECT_TRUE(tags.count("CHILD" + std::to_string(i))) << i;
    EXPECT_TRUE(tags.count("PARENT" + std::to_string(i))) << i;
  }
}

TEST_F(Store, TwoThreadsWritingOneFileLoseNothing) {
  write_text("temp/key2value.dat", "");
  std::thread other([] { add_keys("OTHER", 200); });
  add_keys("MINE", 200);
  other.join();
  EXPECT_EQ(tags_of(read_text("temp/key2value.dat")).size(), 400u);
}

TEST_F(Store, AWriterThatWaitsSaysWhoHoldsTheFolder) {
  FolderLock::set_holder_description("quorva generate");
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    FolderLock held;
    char c = held.held() ? 'y' : 'n';
    if (::write(ready[1], &c, 1) != 1) ::_exit(1);
    ::usleep(800 * 1000);
    ::_exit(0);
  }
  char c = 0;
  ASSERT_EQ(::read(ready[0], &c, 1), 1);
  ASSERT_EQ(c, 'y');
  const std::string holder = "process " + std::to_string(child) + " (quorva generate)";
  {
    FolderLock impatient(std::chrono::milliseconds(50), std::chrono::milliseconds(200));
    EXPECT_FALSE(impatient.held());
    EXPECT_EQ(impatient.status().message(), lock_failure_message(holder));
  }
  {
    FolderLock patient(std::chrono::milliseconds(50), std::chrono::seconds(20));
    EXPECT_TRUE(patient.held());
  }
  ASSERT_FALSE(ui_.statuses.empty());
  EXPECT_EQ(ui_.statuses.front(), lock_wait_message(holder));
  ::waitpid(child, nullptr, 0);
  ::close(ready[0]);
  ::close(ready[1]);
}

}  // namespace
}  // namespace quorva::test
