#include "tagfile/tag_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/folder_lock.h"
#include "tagfile/latin1.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

namespace quorva::test {
namespace {

class TagFile : public FolderTest {};

struct ReadCase {
  const char *name, *contents, *tag;
  std::optional<std::string> expected;
};

TEST_F(TagFile, ReadsFirstExactMatch) {
  const ReadCase cases[] = {
      {"duplicate tag gives first", "A=1\nA=2\n", "A", "1"},
      {"blank before equals, other case, longer name", "ABC=x\nAB =x\nab=x\n", "AB", std::nullopt},
      {"prefix tag does not collide", "KEY2=b\nKEY=a\n", "KEY", "a"},
      {"empty value is missing", "A=\n", "A", std::nullopt},
      {"one blank is a value", "A= \n", "A", " "},
      {"embedded equals kept", "A=B=C\n", "A", "B=C"},
      {"last line without newline", "X=1\nA=last", "A", "last"},
      {"carriage return before newline dropped", "A=dos\r\nB=2\r\n", "A", "dos"},
      {"lone carriage return at end kept", "A=x\r", "A", "x\r"},
      {"comment and blank lines ignored", "\n# note\nA=1\n", "A", "1"},
  };
  for (const ReadCase& c : cases) {
    write_text("t.dat", c.contents);
    EXPECT_EQ(Leggi_tag("t.dat", false, c.tag), c.expected) << c.name;
  }
}

TEST_F(TagFile, IntegerAndSwitchConversions) {
  write_text(
      "t.dat",
      "on=on\nON=ON\nOn=On\noff=off\nOFF=OFF\nnum=12abc\nneg=-7\nword=abc\nbig=99999999999\n");
  const struct {
    const char* tag;
    int as_int;
    bool as_switch;
  } cases[] = {
      {"on", 1, true},        {"ON", 1, true},
      {"On", 0, false},       {"off", 0, false},
      {"OFF", 0, false},      {"num", 12, false},
      {"neg", -7, false},     {"word", 0, false},
      {"missing", -1, false}, {"big", 2147483647, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Leggi_tag_int("t.dat", false, c.tag), c.as_int) << c.tag;
    EXPECT_EQ(Leggi_tag_onoff("t.dat", false, c.tag), c.as_switch) << c.tag;
  }
}

TEST_F(TagFile, ReadFailuresShowTheirOwnMessages) {
  write_text("t.dat", "A=\n");
  EXPECT_FALSE(Leggi_tag("none.dat", true, "A"));
  EXPECT_FALSE(Leggi_tag("t.dat", true, "A"));
  EXPECT_EQ(Leggi_tag_int("t.dat", true, "A"), -1);
  EXPECT_FALSE(Leggi_tag_onoff("t.dat", true, "A"));
  EXPECT_FALSE(Leggi_tag_ita("none.dat", true, "A"));
  EXPECT_FALSE(Leggi_tag("t.dat", false, "A"));  // silent without the popup flag
  const std::vector<std::string> expected = {
      "WARNING , I cannot open the file:none.dat",
      "WARNING,the Tag (A) results not found or blank in the defined file :t.dat",
      "WARNING, the Tag (A) cannot be found inside the file:t.dat",
      "WARNING, the Tag (A) cannot be found inside the file :t.dat",
      "ATTENZIONE, impossibile aprire il file:none.dat",
  };
  EXPECT_EQ(ui_.messages, expected);
}

// Which values mean English is pinned with the log; here, that reading follows it.
TEST_F(TagFile, MessagesFollowTheConfiguredLanguage) {
  write_text("Resource/QVconfig.ini", "target_language=ITA\n");
  Leggi_tag("none.dat", true, "A");
  EXPECT_EQ(ui_.messages,
            std::vector<std::string>{"ATTENZIONE, impossibile aprire il file:none.dat"});
}

// Modify changes every line of the tag and drops blank lines; delete keeps them and grows
// one at the end.
TEST_F(TagFile, ModifyAndDeleteRewriteTheFile) {
  const struct {
    const char *name, *before, *after;
    bool remove;
  } cases[] = {
      {"all matching lines", "A=1\nB=x\nA=2\n", "A=3\nB=x\nA=3\n", false},
      {"blank lines dropped", "\nB=x\n\n\nA=1\n\n", "B=x\nA=3\n", false},
      {"absent tag: rewritten without blanks", "B=x\n\nC=y", "B=x\nC=y\n", false},
      {"crlf lines come back with lf", "A=1\r\nB=2\r\n", "A=3\nB=2\n", false},
      {"both lines removed", "A=1\nB=x\nA=2\n", "B=x\n\n", true},
      {"blank lines kept", "\nA=1\n\nB=x\n", "\n\nB=x\n\n", true},
      {"no final newline", "A=1\nB=x", "B=x\n", true},
      {"absent tag leaves bytes alone", "B=x\n\r\n", "B=x\n\r\n", true},
      {"prefix tag untouched", "AB=1\nA=2\n", "AB=1\n\n", true},
  };
  for (const auto& c : cases) {
    write_text("t.dat", c.before);
    (void)(c.remove ? Cancella_tag("t.dat", false, "A")
                    : Modifica_tag("t.dat", false, false, "A", "3"));
    EXPECT_EQ(read_text("t.dat"), c.after) << c.name;
  }
  write_text("t.dat", "B=x\n");
  (void)Modifica_tag("t.dat", false, true, "A", "new");
  EXPECT_EQ(read_text("t.dat"), "B=x\nA=new\n");
  write_text("t.dat", "A=1\nB=x\n");
  (void)Cancella_tag("t.dat", false, "A");
  (void)Appendi_tag("t.dat", false, "A", "2");
  (void)Cancella_tag("t.dat", false, "A");
  EXPECT_EQ(read_text("t.dat"), "B=x\n\n\n");
}

TEST_F(TagFile, ModifyNeverCreatesAMissingFile) {
  (void)Modifica_tag("none.dat", true, true, "A", "1");
  EXPECT_FALSE(Esiste_file("none.dat"));
  EXPECT_EQ(ui_.messages, std::vector<std::string>{"WARNING, I cannot open the filenone.dat"});
}

TEST_F(TagFile, AppendNeverLooksForAnExistingLine) {
  (void)Appendi_tag("new.dat", false, "A", "1");
  (void)Appendi_tag_int("new.dat", false, "A", -42);
  (void)Appendi_tag("new.dat", false, "B", "");
  EXPECT_EQ(read_text("new.dat"), "A=1\nA=-42\nB=\n");
  EXPECT_EQ(Leggi_tag("new.dat", false, "A"), "1");
}

TEST_F(TagFile, AppendFailureIsShownAndLogged) {
  (void)Appendi_tag("nofolder/x.dat", true, "T", "v");
  (void)Appendi_tag_int("nofolder/x.dat", true, "T", 5);
  EXPECT_EQ(ui_.messages,
            (std::vector<std::string>{"I cannot open the file...", "I cannot open the File..."}));
  EXPECT_EQ(read_text("error.log"),
            "\nERROR :Impossibile Aprire il file-99\nERROR :nomefile:nofolder/x.dat"
            "\nERROR :str_tag:T\nERROR :stringa da appendere:v"
            "\nERROR :Impossibile Aprire il file-99\nERROR :nomefile:nofolder/x.dat"
            "\nERROR :str_tag:T\nERROR :stringa da appendere:5");
}

TEST_F(TagFile, CopyChecksInTheirOrder) {
  write_text("src.dat", std::string("bin\0ary\r\n", 10));
  const struct {
    const char *source, *destination, *message, *log;
  } cases[] = {
      {"", "d.dat", "The Source file doesn't exists !!",
       "\nERROR :Impossibile copiare file - Sorgente inesistente - Source:"},
      {"missing.dat", "missing.dat", "The Source file doesn't exists !!",
       "\nERROR :Impossibile copiare file - Sorgente inesistente - Source:missing.dat"},
      {"src.dat", "src.dat", "Source and Destination files cannot be the same!!!",
       "\nERROR :Impossibile copiare file - Sorgente == Destinazione - Source:src.dat"},
      {"src.dat", "./src.dat", nullptr,
       nullptr},  // another form of the same path is not recognised
      {"src.dat", "nofolder/d.dat", "I cannot open the Destination file!!",
       "\nERROR :Impossibile copiare file - Apertura fallita - Dest:nofolder/d.dat2"},
  };
  for (const auto& c : cases) {
    RecordingUi ui;
    std::filesystem::remove("error.log");
    (void)Copia_file(true, c.source, c.destination);
    if (c.message) {
      EXPECT_EQ(ui.messages, std::vector<std::string>{c.message}) << c.source << c.destination;
      EXPECT_EQ(read_text("error.log"), c.log);
    } else {
      EXPECT_TRUE(ui.messages.empty());
    }
  }
  (void)Copia_file(false, "src.dat", "copy.dat");
  EXPECT_EQ(read_text("copy.dat"), read_text("src.dat"));
}

TEST_F(TagFile, WholeFileOperations) {
  write_text("full.dat", "A=1\n");
  (void)Crea_file("full.dat", true);
  EXPECT_EQ(read_text("full.dat"), "");
  EXPECT_TRUE(Esiste_file("full.dat"));
  EXPECT_FALSE(Esiste_file(""));
  EXPECT_TRUE(Cancella_file("full.dat", true).ok());
  EXPECT_FALSE(Esiste_file("full.dat"));
  EXPECT_FALSE(Cancella_file("full.dat", true).ok());
  (void)Crea_file("nofolder/x.dat", true);
  EXPECT_EQ(ui_.messages,
            (std::vector<std::string>{"I cannot delete the following file:\tfull.dat",
                                      "I failed to create the file:\tnofolder/x.dat"}));
}

TEST_F(TagFile, SpaceHelpers) {
  const struct {
    const char *in, *trimmed, *squeezed;
  } cases[] = {
      {"  a b  ", "a b", "ab"},
      {"   ", "   ", ""},
      {"", "", ""},
      {"\ta\t ", "\ta\t", "\ta\t"},
  };
  for (const auto& c : cases) {
    std::string t = c.in, s = c.in;
    Trim_spazi(t);
    Togli_spazi(s);
    EXPECT_EQ(t, c.trimmed);
    EXPECT_EQ(s, c.squeezed);
  }
}

TEST(ColumnReplace, KeepsLaterColumnsWhereItCan) {
  const struct {
    const char *line, *tag, *value, *expected;
    bool result;
  } cases[] = {
      {"MOVE KEY TO  X", "KEY", "AB", "MOVE AB  TO  X", true},
      {"MOVE KEY TO  X", "KEY", "XYZ", "MOVE XYZ TO  X", true},
      {"MOVE KEY TO  X", "KEY", "ABCD", "MOVE ABCD TO X", true},
      {"MOVE KEY TO  X", "KEY", "ABCDE", "MOVE ABCDE TO X", false},
      {"MOVE KEY", "KEY", "A", "MOVE A", true},  // no blank after: the line stays shorter
      {"<FILEIN1>  X", "<FILEIN1>", "IN", "IN         X", true},
      {"A#B#C  ", "#", "12", "A12B12C ", false},  // the second occurrence finds no double blank
      {"KK KK", "KK", "KKK", "KKK KKK", false},   // an inserted value is never searched again
      {"same", "same", "same", "same", true},
      {"a  b", " ", "", "a b", true},  // padding is never searched again
      {"x    y", "  ", " ", "x   y", true},
      {"text", "", "x", "text", true},
      {"no tag here", "ZZ", "Y", "no tag here", true},
  };
  for (const auto& c : cases) {
    std::string line = c.line;
    EXPECT_EQ(Sostituisci_in_colonna(line, c.tag, c.value), c.result) << c.line << " " << c.value;
    EXPECT_EQ(line, c.expected) << c.line << " " << c.value;
  }
}

TEST(Latin1, RoundTripAndRefusals) {
  TempWorkingFolder folder;
  const struct {
    std::string utf8;
    std::optional<std::string> latin1;
  } cases[] = {
      {"PGM01", "PGM01"},
      {"Citt\xC3\xA0 \xC3\x88", "Citt\xE0 \xC8"},
      {"\xE2\x82\xAC", std::nullopt},  // the euro sign is not ISO-8859-1
      {"\xC3", std::nullopt},          // cut sequence
      {"\xA0", std::nullopt},          // stray continuation byte
  };
  for (const auto& c : cases) {
    Latin1Result result = utf8_to_latin1(c.utf8);
    EXPECT_EQ(result.text, c.latin1) << c.utf8;
    EXPECT_EQ(result.message.empty(), c.latin1.has_value());
    if (c.latin1) EXPECT_EQ(latin1_to_utf8(*c.latin1), c.utf8);
  }
  // Accented small letters have their capitals; the division sign, sharp s and y with
  // diaeresis have none in the set.
  EXPECT_EQ(latin1_upper("citt\xE0 \xE8 \xF1 \xFE \xF7 \xDF \xFF 9z"),
            "CITT\xC0 \xC8 \xD1 \xDE \xF7 \xDF \xFF 9Z");
}

TEST(Log, EntriesHaveTheirByteLayout) {
  TempWorkingFolder folder;
  Crea_log(LogKind::kWarning);
  Scrivi_log("The current Client Version is:", 7, LogKind::kWarning);
  Scrivi_log_dettaglio("Tag:", "KEY", 0, 0, LogKind::kWarning);
  Scrivi_log_dettaglio("one:", "x", kNoNumber, 5, LogKind::kWarning);
  Scrivi_log_dettaglio("other:", "y", 4, kNoNumber, LogKind::kWarning);
  Scrivi_log_dettaglio("nomefile:", "f", kNoNumber, kNoNumber, LogKind::kWarning);
  EXPECT_EQ(read_text("warning.log"),
            "Quorva - Warning Log :\nWARNING :The current Client Version is:7\nWARNING :Tag:KEY00"
            "\nWARNING :one:x5\nWARNING :other:y4\nWARNING :nomefile:f");

  Scrivi_log("a", kNoNumber, LogKind::kError);
  Scrivi_log("b", kNoNumber, LogKind::kError);
  EXPECT_EQ(read_text("error.log"), "\nERROR :a-99\nERROR :b-99");

  Crea_log(LogKind::kWarning);
  Crea_log(LogKind::kWarning);
  EXPECT_EQ(read_text("warning.log"), "Quorva - Warning Log :");
}

TEST(Log, CallersFileGetsTheEntryWithoutMarkerAndIsClosed) {
  TempWorkingFolder folder;
  Scrivi_log("count:", 3, std::fopen("own.txt", "wb"));
  Scrivi_log_dettaglio("name:", "v", 1, kNoNumber, std::fopen("own2.txt", "wb"));
  EXPECT_EQ(read_text("own.txt"), "count:3");
  EXPECT_EQ(read_text("own2.txt"), "name:v1");
  Scrivi_log("lost", 1, static_cast<std::FILE*>(nullptr));
}

TEST(Log, LanguageIsExactlyEng) {
  for (const auto& [value, english] :
       {std::pair{"ENG", true}, {"eng", false}, {"ENG ", false}, {"", false}, {"ITA", false}}) {
    TempWorkingFolder folder(value);
    EXPECT_EQ(Lingua_inglese(), english) << '"' << value << '"';
    EXPECT_EQ(bilingual("yes", "si"), english ? "yes" : "si");
  }
  TempWorkingFolder no_config("");
  EXPECT_FALSE(Lingua_inglese());
}

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

TEST_F(Store, HeldReadsFollowTheWritesOfTheTagFunctions) {
  for (const WriteCase& c : kWrites) {
    write_text("t.dat", "A=1\nB=2\n");
    write_text("other.dat", "X=1\n");
    const HeldReads held;
    EXPECT_EQ(Leggi_tag("t.dat", false, "A"), "1") << c.name;
    (void)c.write();
    EXPECT_EQ(read_whole_file("t.dat"), read_text("t.dat")) << c.name;
  }
  // Written by other means, a file is read again once forgotten.
  write_text("t.dat", "A=1\n");
  const HeldReads held;
  EXPECT_EQ(Leggi_tag("t.dat", false, "A"), "1");
  write_text("t.dat", "A=2\n");
  EXPECT_EQ(Leggi_tag("t.dat", false, "A"), "1");
  forget_held_read("t.dat");
  EXPECT_EQ(Leggi_tag("t.dat", false, "A"), "2");
}

TEST_F(Store, AReplacementChangesTheFileAtItsCommitOnly) {
  FaultyDisk counting("", false);  // the default replacement: pieces kept, replace() at commit
  Disk* disks[] = {&real_disk(), &counting};
  for (Disk* d : disks) {
    write_text("t.dat", "old\n");
    {
      std::unique_ptr<Replacement> dropped = d->begin_replace("t.dat");
      dropped->write("new ");
    }
    std::unique_ptr<Replacement> kept = d->begin_replace("t.dat");
    kept->write("new ");
    kept->write("text\n");
    EXPECT_EQ(read_text("t.dat"), "old\n");
    EXPECT_TRUE(kept->commit().ok());
    EXPECT_EQ(read_text("t.dat"), "new text\n");
    EXPECT_EQ(d->begin_replace("nofolder/t.dat")->commit().status, FileWrite::kOpenFailed);
  }
  EXPECT_EQ(counting.attempts, 2);
  for (const auto& entry : std::filesystem::directory_iterator("."))
    EXPECT_EQ(entry.path().filename().string().find(".tmp"), std::string::npos) << entry.path();
}

// A program generated again is written over the contents its previous replacement put
// aside and exchanged with the file: the previous text stays aside, a shorter text leaves
// nothing of a longer one, the file keeps its permissions, and an aside file another
// writer holds is passed over for a temporary file.
TEST_F(Store, AReplacementBegunWritesOverWhatItPutAside) {
  auto replace = [](const std::string& text) {
    std::unique_ptr<Replacement> r = real_disk().begin_replace("p.txt");
    r->write(text);
    return r->commit().ok();
  };
  write_text("p.txt", "first, a long one\n");
  std::filesystem::permissions(
      "p.txt", std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  ASSERT_TRUE(replace("second\n"));
  EXPECT_EQ(read_text("p.txt"), "second\n");
  EXPECT_EQ(read_text(".p.txt.prev"), "first, a long one\n");
  ASSERT_TRUE(replace("third\n"));
  EXPECT_EQ(read_text("p.txt"), "third\n");
  EXPECT_EQ(read_text(".p.txt.prev"), "second\n");
  EXPECT_EQ(std::filesystem::status("p.txt").permissions() & std::filesystem::perms::all,
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  const int held = ::open(".p.txt.prev", O_RDONLY);
  ASSERT_EQ(::flock(held, LOCK_EX), 0);
  ASSERT_TRUE(replace("fourth\n"));
  ::close(held);
  EXPECT_EQ(read_text("p.txt"), "fourth\n");
  EXPECT_EQ(read_text(".p.txt.prev"), "second\n");
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
