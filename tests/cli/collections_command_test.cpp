#include <gtest/gtest.h>

#include <filesystem>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

// Collections made on the command line reach a real generation, and a deletion asks.
TEST(CollectionsCommand, CollectionsReachTheGeneratedProgram) {
  QuorvaHome home(QuorvaHome::kSample);
  const std::filesystem::path programs = home.path / "programs";
  expect_steps(&home, {{"collections new k2v BR --desc Branches", 0, ""},
                       {"collections set k2v BR '<NO>=x' CUSTMOV=CUSTMVX", 0, ""},
                       {"collections unset k2v BR '<NO>'", 0, ""},
                       {"collections use k2v BR", 0, ""},
                       {"collections new snippets INIT", 0, ""},
                       {"collections new flags EXTRA", 0, ""},
                       {"collections set flags EXTRA CZZ=2 JZZ=1", 0, ""},
                       {"collections use flags EXTRA", 0, ""}});
  const CommandResult piped =
      run_command("printf \"           DISPLAY 'UP'.\\n\" | " + shell_quote(QUORVA_BINARY) +
                  " --home " + shell_quote(home.path.string()) +
                  " collections set snippets INIT '[COBOL CUSTOM INITIALIZE]'");
  ASSERT_EQ(piped.status, 0) << piped.output;
  expect_steps(&home, {{"collections use snippets INIT", 0, ""},
                       {"collections list k2v", 0, "BR  (in use, slot 1)"},
                       {"collections show flags EXTRA", 0, "CZZ=2\nJZZ=1\n"},
                       {"--yes generate", 0, ""}});
  EXPECT_EQ(read_text(programs / "Key2Value_BR.txt"), "desc_key2value=Branches\nCUSTMOV=CUSTMVX\n");
  EXPECT_EQ(read_text(programs / "Custom_INIT.txt"),
            "[COBOL CUSTOM INITIALIZE]\n           DISPLAY 'UP'.\n");
  EXPECT_EQ(read_text(home.path / "temp/customused.dat"),
            "Custom_code_1=" + programs.string() + "/Custom_INIT.txt\n");
  const std::string program = read_text(programs / "CUSTMOV.txt");
  EXPECT_NE(program.find("CUSTMVX"), std::string::npos);
  EXPECT_NE(program.find("DISPLAY 'UP'."), std::string::npos);

  expect_steps(&home, {{"collections delete k2v BR", 1, "is in use (slot 1)"},
                       {"--yes collections delete k2v BR", 0, ""},
                       {"collections show k2v BR", 1, "There is no collection named BR"}});
  EXPECT_FALSE(std::filesystem::exists(programs / "Key2Value_BR.txt"));
  EXPECT_EQ(read_text(home.path / "temp/customK2V.dat").find("Key2Value_01"), std::string::npos);
}

TEST(CollectionsCommand, RefusalsWriteNothing) {
  QuorvaHome home(QuorvaHome::kSample);
  expect_steps(&home, {{"collections new flags A", 0, ""}});
  const std::string before = read_text(home.path / "programs/Flags_Coll_A.txt");
  expect_steps(&home, {{"collections new flags 'a/b'", 1, "cannot hold"},
                       {"collections new flags a", 1, "already exists: A"},
                       {"collections set flags A CZZ=0", 1, "Limit Flag a Zero:CZZ"},
                       {"collections set flags A CZZ", 1, "Write each row as KEY=VALUE"},
                       {"collections set k2v A K=V", 1, "There is no collection named A"},
                       {"collections unuse flags A", 1, "is not in use"},
                       {"collections unset flags A CQQ", 1, "There is no row CQQ"},
                       {"collections new snippets S --desc x", 1, "Custom code has no description"},
                       {"collections unuse flags --slot 26", 1, "There is no slot 26"},
                       {"collections list lists", 2, "KIND"},
                       {"collections rename flags A", 2, "TO"}});
  EXPECT_EQ(read_text(home.path / "programs/Flags_Coll_A.txt"), before);
  EXPECT_FALSE(std::filesystem::exists(home.path / "temp/Flags.dat"));
}

}  // namespace
}  // namespace quorva::test
