#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <sstream>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

// Every front end reads the same switch words, whatever the file stores.
TEST(CommandConventions, SwitchWords) {
  QuorvaHome home(QuorvaHome::kSample);
  const struct {
    const char* word;
    bool on;
  } words[] = {{"on", true},   {"ON", true},   {"yes", true}, {"true", true},   {"1", true},
               {"off", false}, {"OFF", false}, {"no", false}, {"false", false}, {"0", false}};
  for (const auto& w : words) {
    const std::string word = w.word;
    expect_steps(&home, {{"program set commit=" + word, 0, ""},
                         {"options set tips=" + word, 0, ""},
                         {"db2 select 1 --autofill " + word + " --auto-owner " + word, 0, ""}});
    const std::string program = read_text(home.path / "temp/Parbase.dat");
    const std::string config = read_text(home.path / "Resource/QVconfig.ini");
    const std::string lower = w.on ? "on" : "off";
    const std::string upper = w.on ? "ON" : "OFF";
    EXPECT_NE(program.find("\ncommit=" + lower + "\n"), std::string::npos) << word;
    EXPECT_NE(config.find("TIPS_AND_TRICKS=" + upper + "\n"), std::string::npos) << word;
    EXPECT_NE(config.find("Autofill_db2=" + upper + "\nAutoOwner_db2=" + upper + "\n"),
              std::string::npos)
        << word;
  }
  const std::string before = read_text(home.path / "temp/Parbase.dat");
  expect_steps(&home,
               {{"program set name=OTHER commit=maybe", 1, "commit must be on or off"},
                {"options set tips=", 1, "tips must be ON or OFF (or yes/no, true/false, 1/0)"},
                {"db2 select 1 --autofill si", 2, "--autofill: must be on or off"}});
  EXPECT_EQ(read_text(home.path / "temp/Parbase.dat"), before);
}

TEST(CommandConventions, UnknownWordsNameTheNearestCommand) {
  QuorvaHome home;
  expect_steps(
      &home,
      {{"genrate", 2, "\"genrate\" is not a command of quorva. Did you mean: quorva generate ?"},
       {"PROGRAM show", 2, "Did you mean: quorva program ?"},
       {"program sett name=X", 2, "Did you mean: quorva program set ?"},
       // "col" begins two commands since collections came: the prefix must tell them apart.
       {"colu", 2, "Did you mean: quorva columns ?"},
       {"colle", 2, "Did you mean: quorva collections ?"},
       {"nonsense", 2, "The subcommands of quorva: init, check, generate"},
       {"--hme /tmp program show", 2, "Unknown option --hme of quorva. Did you mean: --home ?"},
       {"files input 1 --dsc x", 2,
        "Unknown option --dsc of quorva files input. Did you mean: "
        "--desc ?"}});
  EXPECT_EQ(home.run("nonsense").output.find("Did you mean"), std::string::npos);
}

TEST(CommandConventions, RowsBeyondThePanelsCount) {
  QuorvaHome home;
  expect_steps(
      &home,
      {{"program set name=PGM1 language=cobol inputs=2 select=1 update=0", 0, ""},
       {"files input 3 --desc x", 1,
        "Row 3 is beyond the 2 input files of the program (filein in temp/Parbase.dat; change "
        "it with quorva program set filein=N)."},
       {"files input 0", 1, "Row 0 does not exist: rows are numbered from 1 to the 2 input"},
       {"db2 update 1 --table X", 1, "Row 1 is beyond the 0 UPDATE accesses"},
       {"columns set select 2 query --all", 1, "Access 2 is beyond the 1 SELECT accesses"},
       {"columns show select 2 where", 1, "(select in temp/Parbase.dat"}});
}

// A write that fails makes the command fail, says why, and leaves the file as it was.
TEST(CommandConventions, FailedWritesExitOne) {
  QuorvaHome home(QuorvaHome::kSample);
  ASSERT_EQ(home.run("program set name=PGM1 inputs=1").status, 0);
  const struct {
    const char* file;
    const char* command;
    const char* says;
  } cases[] = {
      {"temp/key2value.dat", "files input 1 --desc B", "I cannot write the file temp/key2value"},
      {"temp/col_select.dat", "columns clear select 1 query", "I cannot write the file"},
  };
  for (const auto& c : cases) {
    const std::filesystem::path file = home.path / c.file;
    const std::string before = read_text(file);
    ASSERT_FALSE(before.empty()) << c.file;
    ::chmod(file.c_str(), 0444);  // the store replaces no file marked read-only
    expect_steps(&home, {{c.command, 1, c.says}});
    ::chmod(file.c_str(), 0644);
    EXPECT_EQ(read_text(file), before) << c.file;
  }
  // A generation declined at the overwrite question has not done what was asked.
  expect_steps(&home, {{"--yes generate", 0, ""}, {"--no generate", 1, "(--no)"}});
}

TEST(CommandConventions, YesGoesAheadAtEveryQuestion) {
  QuorvaHome home;
  ASSERT_EQ(home.run("program set name=PGM1 fetch=2").status, 0);
  ASSERT_EQ(home.run("db2 fetch 1 --cursor CSR1").status, 0);
  // Yes to "correct them now?" would keep the panel open: --yes saves instead.
  expect_steps(&home, {{"db2 fetch 2 --cursor CSR1", 1, "not going ahead"},
                       {"--no db2 fetch 2 --cursor CSR1", 1, "(--no)"},
                       {"--yes db2 fetch 2 --cursor CSR1", 0, "the cursor names repeat"}});
  EXPECT_NE(read_text(home.path / "temp/key2value.dat").find("CURS-2F=CSR1\n"), std::string::npos);
}

// The subcommands a --help lists.
std::vector<std::string> listed_subcommands(const std::string& help) {
  std::vector<std::string> names;
  std::istringstream in(help);
  std::string line;
  bool listing = false;
  while (std::getline(in, line)) {
    if (line == "Subcommands:") {
      listing = true;
    } else if (listing && line.rfind("  ", 0) == 0 && line.size() > 2 && line[2] != ' ') {
      names.push_back(line.substr(2, line.find(' ', 2) - 2));
    } else if (listing) {
      listing = false;
    }
  }
  return names;
}

TEST(CommandConventions, EveryHelpEndsWithAnExample) {
  std::vector<std::string> paths{""};
  int pages = 0;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const CommandResult help = quorva(paths[i] + " --help");
    ASSERT_EQ(help.status, 0) << paths[i];
    ++pages;
    std::string text = help.output;
    while (!text.empty() && text.back() == '\n') text.pop_back();
    const std::size_t example = text.rfind("\nExample:\n  ");
    ASSERT_NE(example, std::string::npos) << "quorva " << paths[i] << " --help\n" << text;
    EXPECT_NE(text.find(paths[i], example), std::string::npos) << text;
    for (const std::string& name : listed_subcommands(help.output))
      paths.push_back(paths[i].empty() ? name : paths[i] + " " + name);
  }
  EXPECT_GE(pages, 30);
}

// The lock's holder is named by its command alone, and a second writer waits for it.
TEST(CommandConventions, WritersWaitForTheFolderLock) {
  QuorvaHome home;
  const std::string lock = (home.path / "temp/quorva.lock").string();
  ASSERT_EQ(home.run("user set password=SECRET1").status, 1);  // other fields missing
  const std::string holder = read_text(lock);
  EXPECT_NE(holder.find("(quorva user set)"), std::string::npos) << holder;
  EXPECT_EQ(holder.find("SECRET1"), std::string::npos);
  if (run_command("command -v flock").status != 0) GTEST_SKIP() << "no flock(1)";
  const CommandResult waited = run_command(
      "flock " + shell_quote(lock) + " sleep 4 & sleep 0.5; " + shell_quote(QUORVA_BINARY) +
      " --home " + shell_quote(home.path.string()) + " program set name=WAITED; wait");
  EXPECT_EQ(waited.status, 0) << waited.output;
  EXPECT_NE(waited.output.find("Waiting for the working folder, in use by"), std::string::npos)
      << waited.output;
  EXPECT_NE(read_text(home.path / "temp/Parbase.dat").find("nomeprogr=WAITED\n"),
            std::string::npos);
}

// Two command lines writing different rows of the same panels, side by side. A panel's OK
// writes every row it read, so each command holds the folder from opening its panel to its
// last write, or one would put back what the other had just changed.
TEST(CommandConventions, TwoWritersLoseNothing) {
  QuorvaHome home;
  expect_steps(&home, {{"program set name=PGM1 language=cobol inputs=9 outputs=9 select=9 "
                        "fetch=9 update=9 insert=9 delete=9",
                        0, ""},
                       {"db2 select 1 --autofill off --auto-owner off", 0, ""}});
  const std::string quorva =
      shell_quote(QUORVA_BINARY) + " --home " + shell_quote(home.path.string());
  // Per writer and round: 3 fields of 5 DB2 kinds and 2 of 2 file kinds, on its own rows.
  auto writer = [&quorva](const std::string& rows) {
    return "for r in 1 2; do for n in " + rows +
           "; do for k in select fetch update insert delete; do for f in owner table desc; do " +
           quorva +
           " db2 $k $n --$f X$r$k$n$f >/dev/null || echo FAILED db2 $k $n $f; done; done; " +
           // File names are DD names: capitals.
           "for f in name desc; do F=$(echo $f | tr a-z A-Z); " + quorva +
           " files input $n --$f I$r$n$F >/dev/null && " + quorva +
           " files output $n --$f O$r$n$F >/dev/null || echo FAILED files $n $f; done; "
           "done; done";
  };
  const CommandResult both =
      run_command("(" + writer("1 3 5 7 9") + ") & (" + writer("2 4 6 8") + "); wait");
  EXPECT_EQ(both.output.find("FAILED"), std::string::npos) << both.output;

  const std::string keys = read_text(home.path / "temp/key2value.dat");
  std::vector<std::string> expected;
  for (int n = 1; n <= 9; ++n) {
    const std::string row = std::to_string(n);
    for (const char* kind : {"select", "fetch", "update", "insert", "delete"})
      for (const char* field : {"owner", "table", "desc"})
        expected.push_back("X2" + std::string(kind) + row + field);
    for (const char* kind : {"I", "O"})
      for (const char* field : {"NAME", "DESC"}) expected.push_back(kind + ("2" + row) + field);
  }
  std::vector<std::string> lost;
  for (const std::string& value : expected)
    if (keys.find("=" + value + "\n") == std::string::npos) lost.push_back(value);
  EXPECT_TRUE(lost.empty()) << lost.size() << " of " << expected.size() << " writes lost, e.g. "
                            << lost.front() << "\n"
                            << keys;
  // Both wrote the configuration (the DB2 switches) too, and lost none of it.
  EXPECT_NE(read_text(home.path / "Resource/QVconfig.ini").find("target_language="),
            std::string::npos);
}

}  // namespace
}  // namespace quorva::test
