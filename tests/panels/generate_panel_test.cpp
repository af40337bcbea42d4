#include "panels/generate_panel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "engine/conversion_list.h"
#include "engine/template_loader.h"
#include "support/faulty_disk.h"
#include "support/recording_ui.h"
#include "support/run_command.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace quorva::test {
namespace {

class GeneratePanelTest : public FolderTest {
 protected:
  // GO on a freshly opened panel.
  static GenerationResult generate() {
    GeneratePanel panel;
    panel.open();
    return panel.go();
  }
};

void write_program_files(const std::string& template_text) {
  write_text("Resource/QVconfig.ini", "target_language=ENG\nQVjoined=29\n");
  write_text("Resource/User.dat",
             "sourcedirectory=out/\ntsouser=TSO01\nnomecognome=Ada Byron\nsocieta=ACME\n");
  write_text("out/.keep", "");
  write_text("temp/Parbase.dat",
             "nomeprogr=PGMA\nlinguaggio=cobol\ntipoprogr=batch\njcl=off\nfilein=1\n"
             "select=1\nparametri=1\ndescprogr0=reads customers\n");
  write_text("temp/key2value.dat", "FILEIN1=CUSTIN\n");
  write_text("Resource/Quormem.txt", template_text);
}

const char* const kTemplate =
    "quormem=T-7\nnumlines=5\nclient= 1.33 \n  [THE CODE BEGINS HERE]  \n"
    "C     * <++++++> <VRS> <DESCRIZIONE-PROGRAMMA1>\n"
    "C     * //.///.//// <-----> <NOME-COGNOME> <NOME-SOCIETA>\n"
    "C     * <SEL/FET/DEL/INS/UPD/ROL/COM>\n"
    "CFI   SELECT FILEIN#\n"
    "C2N   ACCEPT PARM-#\n";

TEST_F(GeneratePanelTest, GoWritesTheProgramWithHeaderValuesAndReportsProgress) {
  write_program_files(kTemplate);
  GeneratePanel generator;
  generator.open();
  GenerationResult result = generator.go();
  ASSERT_EQ(result.status, GenerationResult::kDone);
  EXPECT_EQ(result.output_name, "out/PGMA.txt");
  EXPECT_EQ(read_text("out/PGMA.txt"),
            "      * PGMA     T-7   READS CUSTOMERS\n"
            "      * " +
                header_date() +
                " TSO01   Ada Byron      ACME\n"
                "      * [SEL]\n"
                "      SELECT CUSTIN\n"
                "      ACCEPT PARM-1\n");
  EXPECT_EQ(result.lines_written, 5);
  EXPECT_EQ(result.rank, "LEV. 1 - Easy Coder");
  EXPECT_EQ(Leggi_tag_int(kConfigFile, false, "QVjoined"), 30);
  EXPECT_EQ(ui_.messages.size(), 1u);  // the advance in rank
  ASSERT_EQ(ui_.statuses.size(), 5u);
  EXPECT_EQ(ui_.statuses[4],
            "Quorva JOB complete!!!\r\nPGMA code has been generated in... 5 lines.\r\nNow "
            "proceed with PREVIEW, FTP TRANSFER or QUIT !\r\nYour RANK is :LEV. 1 - Easy Coder");
  EXPECT_EQ(ui_.progress.back(), "Output Generating:5/5");
  EXPECT_EQ(read_text("warning.log"), "Quorva - Warning Log :");

  // A second GO asks before overwriting; No leaves everything as it was.
  const std::string before = read_text("out/PGMA.txt");
  write_text("out/PGMA.txt", "kept");
  EXPECT_EQ(generator.go().status, GenerationResult::kDeclined);
  EXPECT_EQ(read_text("out/PGMA.txt"), "kept");
  EXPECT_EQ(Leggi_tag_int(kConfigFile, false, "QVjoined"), 30);
  ui_.answer(true);
  EXPECT_EQ(generator.go().status, GenerationResult::kDone);
  EXPECT_EQ(read_text("out/PGMA.txt"), before);
}

TEST_F(GeneratePanelTest, SizeWarningRewritesNumlinesAndClientMismatchIsLogged) {
  write_program_files(
      "quormem=T-8\nnumlines=9\nclient=1.330\n\n[THE CODE BEGINS HERE]\nC     A\n\nC     B\n");
  GeneratePanel generator;
  generator.open();
  ASSERT_EQ(generator.go().status, GenerationResult::kDone);
  ASSERT_FALSE(ui_.messages.empty());
  EXPECT_NE(ui_.messages[0].find("\nReaded Lines:3\nDeclared Lines:9\n"), std::string::npos);
  // The rewrite drops empty lines, the code's empty line included.
  EXPECT_EQ(read_text("Resource/Quormem.txt"),
            "quormem=T-8\nnumlines=3\nclient=1.330\n[THE CODE BEGINS HERE]\nC     A\nC     B\n");
  EXPECT_EQ(read_text("warning.log"),
            "Quorva - Warning Log :\nWARNING :There is Client Version difference... It's "
            "suggested to update Quorva Client or your Quormem.txt file. -99\nWARNING :The "
            "current Client Version is:==>1.33<==\nWARNING :The required Client Version to use "
            "all QuorMEM tags is (tag:'client'):==>1.330<==");
  // The next generation counts two lines against the three just written and warns again.
  ui_.messages.clear();
  ui_.answer(true);
  generator.open();
  ASSERT_EQ(generator.go().status, GenerationResult::kDone);
  EXPECT_NE(ui_.messages[0].find("\nReaded Lines:2\nDeclared Lines:3\n"), std::string::npos);
}

TEST_F(GeneratePanelTest, StopsWhenTheOutputFolderIsMissing) {
  write_program_files(kTemplate);
  write_text("Resource/User.dat", "sourcedirectory=missing/\n");
  EXPECT_EQ(generate().status, GenerationResult::kStopped);
  EXPECT_EQ(ui_.messages.back().rfind("It's impossible to open the file:missing/PGMA.txt", 0), 0u);
  EXPECT_FALSE(GeneratePanel::preview());
  EXPECT_EQ(ui_.messages.back(), "Cannot find the following file:\nmissing/PGMA.txt");
}

// Whatever stops a run, the program already there stays byte for byte and nothing is
// written anywhere else.
TEST_F(GeneratePanelTest, AStoppedRunLeavesThePreviousProgram) {
  struct Case {
    const char* what;
    const char* parbase_name;  // nomeprogr as found in the file
    const char* full;          // the file whose replacement fails
    const char* says;
  };
  const Case cases[] = {
      {"full disk", "PGMA", "PGMA.txt", "It's impossible to open the file:out/PGMA.txt"},
      // The counter is written while the program is built: its failure still stops GO.
      {"counter not written", "PGMA", "QVconfig", "I cannot open the output file ..."},
      {"path as name", "../../x", "no file", "The Program Name must be a member name"},
      {"lower case name", "pgma", "no file", "The Program Name must be a member name"},
      {"name too long", "PGMA12345", "no file", "The Program Name must be a member name"},
  };
  for (const Case& c : cases) {
    write_program_files(kTemplate);
    write_text("temp/Parbase.dat", "nomeprogr=" + std::string(c.parbase_name) +
                                       "\nlinguaggio=cobol\ntipoprogr=batch\n");
    write_text("out/PGMA.txt", "previous program\n");
    ui_.messages.clear();
    ui_.answer(true);
    const std::string config = read_text("Resource/QVconfig.ini");
    GenerationResult result;
    {
      FaultyDisk full(c.full);
      result = generate();
    }
    EXPECT_EQ(result.status, GenerationResult::kStopped) << c.what;
    EXPECT_EQ(read_text("out/PGMA.txt"), "previous program\n") << c.what;
    ASSERT_FALSE(ui_.messages.empty()) << c.what;
    EXPECT_EQ(ui_.messages.back().rfind(c.says, 0), 0u) << c.what << ": " << ui_.messages.back();
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator("out"))
      files += !entry.is_directory();
    EXPECT_EQ(files, 2) << c.what;  // .keep and the previous program, no temporary left
    EXPECT_FALSE(std::filesystem::exists("../../x.txt")) << c.what;
    if (c.full == std::string("QVconfig")) EXPECT_EQ(read_text("Resource/QVconfig.ini"), config);
  }
}

// The run JCL is written beside the program from the same run; a program without one
// removes the one an earlier run left, and a failed write leaves both files as they were.
TEST_F(GeneratePanelTest, TheRunJclIsWrittenBesideTheProgram) {
  const std::string jcl = "//PGMAJ     JOB\n//SYSIN DD *\n";
  const struct {
    const char* what;
    const char* options;  // Parbase lines
    const char* full;     // the file a full disk refuses, "" none
    GenerationResult::Status status;
    const char* jcl_after;  // nullptr: removed; "new": the generated JCL
    const char* warning;
  } cases[] = {
      {"batch with JCL", "tipoprogr=batch\njcl=on\n", "", GenerationResult::kDone, "new", ""},
      {"JCL not chosen", "tipoprogr=batch\njcl=off\n", "", GenerationResult::kDone, nullptr,
       "PGMA.jcl of an earlier generation was removed"},
      {"routine", "tipoprogr=routine\njcl=on\n", "", GenerationResult::kDone, nullptr,
       "a routine, which is called and is no job step"},
      {"JCL cannot be written", "tipoprogr=batch\njcl=on\n", "PGMA.jcl", GenerationResult::kStopped,
       "old JCL\n", ""},
      {"program cannot be written", "tipoprogr=batch\njcl=on\n", "PGMA.txt",
       GenerationResult::kStopped, "old JCL\n", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    write_program_files(std::string(kTemplate) + "JC    //<++++++>J JOB\nJC N  //SYSIN DD *\n");
    write_text("temp/Parbase.dat",
               std::string("nomeprogr=PGMA\nlinguaggio=cobol\nparametri=1\n") + c.options);
    write_text("out/PGMA.txt", "old program\n");
    write_text("out/PGMA.jcl", "old JCL\n");
    ui_.answer(true);
    GenerationResult result;
    {
      FaultyDisk full(*c.full ? c.full : "no file");
      result = generate();
    }
    EXPECT_EQ(result.status, c.status);
    const std::string program = read_text("out/PGMA.txt");
    if (c.status == GenerationResult::kStopped) EXPECT_EQ(program, "old program\n");
    if (!c.jcl_after)
      EXPECT_FALSE(std::filesystem::exists("out/PGMA.jcl"));
    else if (std::string(c.jcl_after) == "new")
      EXPECT_EQ(read_text("out/PGMA.jcl"), jcl);
    else
      EXPECT_EQ(read_text("out/PGMA.jcl"), c.jcl_after);
    if (std::string(c.jcl_after ? c.jcl_after : "") == "new")
      EXPECT_EQ(program.substr(program.size() - jcl.size()), jcl);
    const std::string warnings = result.warnings.empty() ? "" : result.warnings[0];
    EXPECT_NE(warnings.find(c.warning), std::string::npos) << warnings;
    if (*c.warning) EXPECT_NE(read_text("warning.log").find(c.warning), std::string::npos);
  }
}

const char* const kEndToEndTemplate =
    "quormem=E2E-1\nnumlines=12\nclient=1.33\n[THE CODE BEGINS HERE]\n"
    "C      IDENTIFICATION DIVISION.\n"
    "C      PROGRAM-ID. <++++++>.\n"
    "C  *  * WRITTEN //.///.//// <SEL/FET/DEL/INS/UPD/ROL/COM>\n"
    "C2S        EXEC SQL SELECT\n"
    "C2SX1           , <DB2_VAL>\n"
    "C2S              INTO\n"
    "C2SX1           , :<COBOL_VAL>\n"
    "C2S              FROM <TABLE#>\n"
    "C2S        END-EXEC.\n"
    "C     [COBOL CUSTOM CLOSING]\n"
    "JC    //<++++++> JOB\n"
    "C      GOBACK.\n";

TEST(GenerateCommand, GeneratesPreviewsAndStopsOnAMissingTemplate) {
  QuorvaHome wf;
  const std::filesystem::path& home = wf.path;
  write_text(home / "Resource/Mine.txt", kEndToEndTemplate);
  write_text(home / "Resource/QVconfig.ini",
             read_text(home / "Resource/QVconfig.ini") + "ALTERNATIVE_QUORMEM_FILE=Mine.txt\n");
  write_text(home / "temp/Parbase.dat",
             "nomeprogr=CUSTRD\nlinguaggio=cobol\ntipoprogr=batch\ncommenti=on\njcl=off\n"
             "select=1\ndescprogr0=Customer reader\n");
  write_text(home / "temp/key2value.dat", "<TABLE1>=CUSTOMER\n");
  write_text(home / "temp/col_select.dat",
             "[SELECT1-QUERY]\n<CUSTOMER>\n<CL-|NAME>\nCUST_ID  1  NULL  S9(9)_COMP  1  0  0\n"
             "CUST_NAME  10  (20)  X(20)  1  1  0\n[/SELECT1-QUERY]\n");
  write_text(home / "programs/Custom_end.txt",
             "desc_custom=closing\n[COBOL CUSTOM CLOSING]\n     DISPLAY 'END <++++++>'.\n");
  write_text(home / "temp/customused.dat",
             "Custom_code_1=" + (home / "programs/Custom_end.txt").string() +
                 "\nCustom_code_2=gone/Custom_x.txt\n");

  expect_steps(&wf, {{"generate --yes", 0, "Quorva JOB complete!!!"}});
  const std::string expected =
      "       IDENTIFICATION DIVISION.\n"
      "       PROGRAM-ID. CUSTRD.\n"
      "      * WRITTEN " +
      header_date() +
      " [SEL]\n"
      "           EXEC SQL SELECT\n"
      "                  CUST_ID\n"
      "                , CUST_NAME\n"
      "                 INTO\n"
      "                  :CL-CUST-ID\n"
      "                , :CL-CUST-NAME\n"
      "                 FROM CUSTOMER\n"
      "           END-EXEC.\n"
      "           DISPLAY 'END CUSTRD'.\n"
      "       GOBACK.\n";
  EXPECT_EQ(read_text(home / "programs/CUSTRD.txt"), expected);

  CommandResult preview = wf.run("preview");
  EXPECT_EQ(preview.status, 0);
  EXPECT_EQ(preview.output, expected);
  expect_steps(&wf, {{"warnings", 0, "WARNING :Custom code file not found:gone/Custom_x.txt"}});
  std::filesystem::remove(home / "Resource/Mine.txt");
  expect_steps(
      &wf, {{"generate --yes", 1, "WARNING, It's impossible to open the file:Resource/Mine.txt"}});
}

}  // namespace
}  // namespace quorva::test
