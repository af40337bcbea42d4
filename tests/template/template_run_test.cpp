// Compiles the generated copy program and two-file match program, with their default
// record layouts and names, and runs them on sample files.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "engine/check_cobol.h"
#include "engine/generator.h"
#include "support/recording_ui.h"
#include "support/run_command.h"
#include "support/temp_folder.h"
#include "template/program_definition_files.h"

namespace quorva::test {
namespace {

namespace fs = std::filesystem;

// One fixed-length 80-byte record: a 10-byte key and 70 bytes of data.
std::string record(const std::string& key, const std::string& data) {
  std::string text = key;
  text.resize(10, ' ');
  text += data;
  text.resize(80, ' ');
  return text;
}

struct RunOutcome {
  int status = -1;
  std::string output;
};

class TemplateRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!cobol_compiler_available()) GTEST_SKIP() << "cobc is not installed";
    prepare_working_folder(folder_.path());
  }

  // Generates the definition, compiles it into an executable and runs it with the given
  // DD_ variables (name, data file).
  RunOutcome build_and_run(const MatrixDefinition& d,
                           const std::vector<std::pair<std::string, std::string>>& files) {
    write_definition(folder_.path(), d);
    RecordingUi ui;
    Generator generator;
    generator.open_panel();
    EXPECT_EQ(generator.go().status, GenerationResult::kDone);
    const fs::path source = folder_.path() / "run/QVTEST.cbl";
    write_text(source, read_text(folder_.path() / "programs/QVTEST.txt"));
    const fs::path binary = folder_.path() / "run/qvtest";
    CommandResult compiled = run_command("cobc -x -std=ibm -o " + shell_quote(binary.string()) +
                                         " " + shell_quote(source.string()));
    EXPECT_EQ(compiled.status, 0) << compiled.output;
    std::string environment;
    for (const auto& [name, file] : files)
      environment += "DD_" + name + "=" + shell_quote((folder_.path() / file).string()) + " ";
    CommandResult run = run_command("ulimit -f 2048; " + environment + "timeout 20 " +
                                    shell_quote(binary.string()));
    return {run.status, run.output};
  }

  fs::path data(const std::string& name) const { return folder_.path() / name; }

  TempWorkingFolder folder_;
};

// The count displayed at the end of the run for a label, or -1.
long displayed_count(const std::string& output, const std::string& label) {
  std::smatch match;
  std::regex pattern(label + R"( *: *([0-9.]+))");
  if (!std::regex_search(output, match, pattern)) return -1;
  std::string digits;
  for (char c : match[1].str())
    if (c != '.') digits += c;
  return std::stol(digits);
}

TEST_F(TemplateRunTest, CopyProgramCopiesEveryRecord) {
  MatrixDefinition d;
  d.filein = 1;
  d.fileout = 1;
  const std::string input =
      record("K001", "FIRST") + record("K002", "SECOND") + record("K003", "THIRD");
  write_text(data("in.dat"), input);
  RunOutcome run = build_and_run(d, {{"UIN1", "in.dat"}, {"UOUT1", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(read_text(data("out.dat")), input);
  EXPECT_EQ(displayed_count(run.output, "RECORDS READ +FILEIN1"), 3) << run.output;
  EXPECT_EQ(displayed_count(run.output, "RECORDS WRITTEN +FILEOUT1"), 3) << run.output;
}

TEST_F(TemplateRunTest, CopyProgramWithOptionsWritesTheSameRecords) {
  MatrixDefinition d;
  d.filein = 1;
  d.fileout = 2;
  d.excel = 1;
  d.thru = d.buffering = d.constants = d.comments = true;
  std::string input;
  for (int i = 1; i <= 700; ++i) input += record("K" + std::to_string(1000 + i), "ROW");
  write_text(data("in.dat"), input);
  RunOutcome run =
      build_and_run(d, {{"UIN1", "in.dat"}, {"UOUT1", "excel.dat"}, {"UOUT2", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  // The buffer holds 500 records: the run crosses one flush while reading.
  const std::string out = read_text(data("out.dat"));
  EXPECT_EQ(out.size(), input.size());
  EXPECT_TRUE(out == input) << "the output records differ from the input records";
  std::string excel = read_text(data("excel.dat"));
  ASSERT_EQ(excel.size(), 701u * 200u);
  EXPECT_EQ(excel.substr(0, 8), "KEY;DATA");
  EXPECT_EQ(excel.substr(200, 14), "K1001     ;ROW");
  EXPECT_EQ(displayed_count(run.output, "RECORDS WRITTEN +FILEOUT2"), 700) << run.output;
}

TEST_F(TemplateRunTest, MatchProgramProcessesTheMatchingDetails) {
  MatrixDefinition d;
  d.kind = 2;
  d.filein = 2;
  d.fileout = 1;
  write_text(data("master.dat"), record("A", "MASTER A") + record("B", "MASTER B") +
                                     record("C", "MASTER C") + record("E", "MASTER E"));
  const std::string matched =
      record("B", "DETAIL B1") + record("B", "DETAIL B2") + record("C", "DETAIL C1");
  write_text(data("detail.dat"), matched + record("D", "DETAIL D1"));
  RunOutcome run =
      build_and_run(d, {{"UIN1", "master.dat"}, {"UIN2", "detail.dat"}, {"UOUT1", "out.dat"}});
  ASSERT_EQ(run.status, 0) << run.output;
  EXPECT_EQ(read_text(data("out.dat")), matched);
  EXPECT_EQ(displayed_count(run.output, "DETAILS MATCHED"), 3) << run.output;
  EXPECT_EQ(displayed_count(run.output, "MASTERS WITHOUT DETAIL"), 2) << run.output;
  EXPECT_EQ(displayed_count(run.output, "DETAILS WITHOUT MASTER"), 1) << run.output;
}

TEST_F(TemplateRunTest, MatchProgramStopsOnAnUnsortedMaster) {
  MatrixDefinition d;
  d.kind = 2;
  d.filein = 2;
  d.fileout = 1;
  write_text(data("master.dat"), record("B", "MASTER B") + record("A", "MASTER A"));
  write_text(data("detail.dat"), record("A", "DETAIL A"));
  RunOutcome run =
      build_and_run(d, {{"UIN1", "master.dat"}, {"UIN2", "detail.dat"}, {"UOUT1", "out.dat"}});
  EXPECT_EQ(run.status, 12) << run.output;
  EXPECT_NE(run.output.find("FILEIN1 NOT SORTED"), std::string::npos) << run.output;
}

}  // namespace
}  // namespace quorva::test
