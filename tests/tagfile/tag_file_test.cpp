#include "tagfile/tag_file.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "support/recording_ui.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

using test::read_text;
using test::RecordingUi;
using test::TempWorkingFolder;
using test::write_text;

struct ReadCase {
  const char* name;
  const char* contents;
  const char* tag;
  std::optional<std::string> expected;
};

TEST(TagFile, ReadsFirstExactMatch) {
  TempWorkingFolder folder;
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
      {"blanks around value kept", "A=  v  \n", "A", "  v  "},
      {"comment and blank lines ignored", "\n# note\nA=1\n", "A", "1"},
  };
  for (const ReadCase& c : cases) {
    write_text("t.dat", c.contents);
    EXPECT_EQ(Leggi_tag("t.dat", false, c.tag), c.expected) << c.name;
  }
}

TEST(TagFile, IntegerAndSwitchConversions) {
  TempWorkingFolder folder;
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

TEST(TagFile, ReadFailuresShowTheirOwnMessages) {
  TempWorkingFolder folder;
  RecordingUi ui;
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
  EXPECT_EQ(ui.messages, expected);
}

TEST(TagFile, MessagesFollowTheConfiguredLanguage) {
  for (const char* language : {"eng", "ENG ", "ITA"}) {
    TempWorkingFolder folder(language);
    RecordingUi ui;
    Leggi_tag("none.dat", true, "A");
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0], "ATTENZIONE, impossibile aprire il file:none.dat") << language;
  }
}

struct RewriteCase {
  const char* name;
  const char* before;
  const char* after;
};

TEST(TagFile, ModifyChangesEveryLineAndDropsBlankLines) {
  TempWorkingFolder folder;
  const RewriteCase cases[] = {
      {"all matching lines", "A=1\nB=x\nA=2\n", "A=3\nB=x\nA=3\n"},
      {"blank lines dropped", "\nB=x\n\n\nA=1\n\n", "B=x\nA=3\n"},
      {"absent tag: rewritten without blanks", "B=x\n\nC=y", "B=x\nC=y\n"},
      {"crlf lines come back with lf", "A=1\r\nB=2\r\n", "A=3\nB=2\n"},
  };
  for (const RewriteCase& c : cases) {
    write_text("t.dat", c.before);
    Modifica_tag("t.dat", false, false, "A", "3");
    EXPECT_EQ(read_text("t.dat"), c.after) << c.name;
  }
  write_text("t.dat", "B=x\n");
  Modifica_tag("t.dat", false, true, "A", "new");
  EXPECT_EQ(read_text("t.dat"), "B=x\nA=new\n");
}

TEST(TagFile, ModifyNeverCreatesAMissingFile) {
  TempWorkingFolder folder;
  RecordingUi ui;
  Modifica_tag("none.dat", true, true, "A", "1");
  EXPECT_FALSE(Esiste_file("none.dat"));
  EXPECT_EQ(ui.messages, std::vector<std::string>{"WARNING, I cannot open the filenone.dat"});
}

TEST(TagFile, DeleteKeepsBlankLinesAndGrowsOneAtTheEnd) {
  TempWorkingFolder folder;
  const RewriteCase cases[] = {
      {"both lines removed", "A=1\nB=x\nA=2\n", "B=x\n\n"},
      {"blank lines kept", "\nA=1\n\nB=x\n", "\n\nB=x\n\n"},
      {"no final newline", "A=1\nB=x", "B=x\n"},
      {"absent tag leaves bytes alone", "B=x\n\r\n", "B=x\n\r\n"},
      {"prefix tag untouched", "AB=1\nA=2\n", "AB=1\n\n"},
  };
  for (const RewriteCase& c : cases) {
    write_text("t.dat", c.before);
    Cancella_tag("t.dat", false, "A");
    EXPECT_EQ(read_text("t.dat"), c.after) << c.name;
  }
  write_text("t.dat", "A=1\nB=x\n");
  Cancella_tag("t.dat", false, "A");
  Appendi_tag("t.dat", false, "A", "2");
  Cancella_tag("t.dat", false, "A");
  EXPECT_EQ(read_text("t.dat"), "B=x\n\n\n");
}

TEST(TagFile, AppendNeverLooksForAnExistingLine) {
  TempWorkingFolder folder;
  Appendi_tag("new.dat", false, "A", "1");
  Appendi_tag_int("new.dat", false, "A", -42);
  Appendi_tag("new.dat", false, "B", "");
  EXPECT_EQ(read_text("new.dat"), "A=1\nA=-42\nB=\n");
  EXPECT_EQ(Leggi_tag("new.dat", false, "A"), "1");
}

TEST(TagFile, AppendFailureIsShownAndLogged) {
  TempWorkingFolder folder;
  RecordingUi ui;
  Appendi_tag("nofolder/x.dat", true, "T", "v");
  Appendi_tag_int("nofolder/x.dat", true, "T", 5);
  EXPECT_EQ(ui.messages,
            (std::vector<std::string>{"I cannot open the file...", "I cannot open the File..."}));
  EXPECT_EQ(read_text("error.log"),
            "\nERROR :Impossibile Aprire il file-99\nERROR :nomefile:nofolder/x.dat"
            "\nERROR :str_tag:T\nERROR :stringa da appendere:v"
            "\nERROR :Impossibile Aprire il file-99\nERROR :nomefile:nofolder/x.dat"
            "\nERROR :str_tag:T\nERROR :stringa da appendere:5");
}

TEST(TagFile, CopyChecksInTheirOrder) {
  TempWorkingFolder folder;
  write_text("src.dat", std::string("bin\0ary\r\n", 10));
  const struct {
    const char* source;
    const char* destination;
    const char* message;
    const char* log;
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
    Copia_file(true, c.source, c.destination);
    if (c.message) {
      EXPECT_EQ(ui.messages, std::vector<std::string>{c.message}) << c.source << c.destination;
      EXPECT_EQ(read_text("error.log"), c.log);
    } else {
      EXPECT_TRUE(ui.messages.empty());
    }
  }
  Copia_file(false, "src.dat", "copy.dat");
  EXPECT_EQ(read_text("copy.dat"), read_text("src.dat"));
}

TEST(TagFile, WholeFileOperations) {
  TempWorkingFolder folder;
  RecordingUi ui;
  write_text("full.dat", "A=1\n");
  Crea_file("full.dat", true);
  EXPECT_EQ(read_text("full.dat"), "");
  EXPECT_TRUE(Esiste_file("full.dat"));
  EXPECT_FALSE(Esiste_file(""));
  EXPECT_EQ(Cancella_file("full.dat", true), 0);
  EXPECT_FALSE(Esiste_file("full.dat"));
  EXPECT_NE(Cancella_file("full.dat", true), 0);
  Crea_file("nofolder/x.dat", true);
  EXPECT_EQ(ui.messages,
            (std::vector<std::string>{"I cannot delete the following file:\tfull.dat",
                                      "I failed to create the file:\tnofolder/x.dat"}));
}

TEST(TagFile, SpaceHelpers) {
  const struct {
    const char* in;
    const char* trimmed;
    const char* squeezed;
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

}  // namespace
}  // namespace quorva
