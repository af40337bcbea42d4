#include "engine/generator.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/conversion_list.h"
#include "engine/template_loader.h"
#include "support/recording_ui.h"
#include "support/temp_folder.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

using test::read_text;
using test::RecordingUi;
using test::TempWorkingFolder;
using test::write_text;

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

TEST(Generator, GoWritesTheProgramWithHeaderValuesAndReportsProgress) {
  TempWorkingFolder folder;
  RecordingUi ui;
  write_program_files(kTemplate);
  Generator generator;
  generator.open_panel();
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
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0],
            "Congratulations!!! You advanced in Rank! Now you are:\n\n\n\t\t\t\t\t"
            "LEV. 1 - Easy Coder");
  ASSERT_EQ(ui.statuses.size(), 5u);
  EXPECT_EQ(ui.statuses[1], "Pseudo-Code Allocating in Progress...\r\n \r\n \r\n");
  EXPECT_EQ(ui.statuses[4],
            "Quorva JOB complete!!!\r\nPGMA code has been generated in... 5 lines.\r\nNow "
            "proceed with PREVIEW, FTP TRANSFER or QUIT !\r\nYour RANK is :LEV. 1 - Easy Coder");
  EXPECT_EQ(ui.progress.back(), "Output Generating:5/5");
  EXPECT_EQ(read_text("warning.log"), "Quorva - Warning Log :");

  // A second GO asks before overwriting; No leaves everything as it was.
  const std::string before = read_text("out/PGMA.txt");
  write_text("out/PGMA.txt", "kept");
  EXPECT_EQ(generator.go().status, GenerationResult::kDeclined);
  EXPECT_EQ(read_text("out/PGMA.txt"), "kept");
  EXPECT_EQ(Leggi_tag_int(kConfigFile, false, "QVjoined"), 30);
  ui.answer(true);
  EXPECT_EQ(generator.go().status, GenerationResult::kDone);
  EXPECT_EQ(read_text("out/PGMA.txt"), before);
}

TEST(Generator, SizeWarningRewritesNumlinesAndClientMismatchIsLogged) {
  TempWorkingFolder folder;
  RecordingUi ui;
  write_program_files(
      "quormem=T-8\nnumlines=9\nclient=1.330\n\n[THE CODE BEGINS HERE]\nC     A\n\nC     B\n");
  Generator generator;
  generator.open_panel();
  ASSERT_EQ(generator.go().status, GenerationResult::kDone);
  ASSERT_FALSE(ui.messages.empty());
  EXPECT_NE(ui.messages[0].find("\nReaded Lines:3\nDeclared Lines:9\n"), std::string::npos);
  // The rewrite drops empty lines, the code's empty line included.
  EXPECT_EQ(read_text("Resource/Quormem.txt"),
            "quormem=T-8\nnumlines=3\nclient=1.330\n[THE CODE BEGINS HERE]\nC     A\nC     B\n");
  EXPECT_EQ(read_text("warning.log"),
            "Quorva - Warning Log :\nWARNING :There is Client Version difference... It's "
            "suggested to update Quorva Client or your Quormem.txt file. -99\nWARNING :The "
            "current Client Version is:==>1.33<==\nWARNING :The required Client Version to use "
            "all QuorMEM tags is (tag:'client'):==>1.330<==");
  // The next generation counts two lines against the three just written and warns again.
  ui.messages.clear();
  ui.answer(true);
  generator.open_panel();
  ASSERT_EQ(generator.go().status, GenerationResult::kDone);
  EXPECT_NE(ui.messages[0].find("\nReaded Lines:2\nDeclared Lines:3\n"), std::string::npos);
}

TEST(Generator, StopsWhenTemplateOrOutputFolderIsMissing) {
  TempWorkingFolder folder;
  RecordingUi ui;
  write_program_files(kTemplate);
  write_text("Resource/QVconfig.ini", "target_language=ENG\nALTERNATIVE_QUORMEM_FILE=Mine.txt\n");
  Generator generator;
  generator.open_panel();
  EXPECT_EQ(generator.template_name(), "Resource/Mine.txt");
  EXPECT_EQ(generator.go().status, GenerationResult::kStopped);
  EXPECT_EQ(ui.messages.back(), "WARNING, It's impossible to open the file:Resource/Mine.txt");
  write_text("Resource/QVconfig.ini", "target_language=ENG\n");
  write_text("Resource/User.dat", "sourcedirectory=missing/\n");
  generator.open_panel();
  EXPECT_EQ(generator.go().status, GenerationResult::kStopped);
  EXPECT_EQ(ui.messages.back().rfind("It's impossible to open the file:missing/PGMA.txt", 0), 0u);
  EXPECT_FALSE(Generator::preview());
  EXPECT_EQ(ui.messages.back(), "Cannot find the following file:\nmissing/PGMA.txt");
}

}  // namespace
}  // namespace quorva
