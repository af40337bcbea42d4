#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "engine/conversion_list.h"
#include "support/run_command.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

using test::read_text;
using test::run_command;
using test::shell_quote;
using test::TempWorkingFolder;
using test::write_text;

const char* const kTemplate =
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
  TempWorkingFolder scratch;
  const fs::path home = scratch.path() / "wf";
  const std::string quorva = shell_quote(QUORVA_BINARY) + " --home " + shell_quote(home.string());
  ASSERT_EQ(run_command(shell_quote(QUORVA_BINARY) + " init " + shell_quote(home.string())).status,
            0);
  write_text(home / "Resource/Mine.txt", kTemplate);
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

  test::CommandResult generated = run_command(quorva + " generate --yes");
  ASSERT_EQ(generated.status, 0) << generated.output;
  EXPECT_NE(generated.output.find("Quorva JOB complete!!!"), std::string::npos);
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

  test::CommandResult preview = run_command(quorva + " preview");
  EXPECT_EQ(preview.status, 0);
  EXPECT_EQ(preview.output, expected);
  test::CommandResult warnings = run_command(quorva + " warnings");
  EXPECT_NE(warnings.output.find("WARNING :Custom code file not found:gone/Custom_x.txt"),
            std::string::npos)
      << warnings.output;

  test::CommandResult declined = run_command(quorva + " --no generate");
  EXPECT_EQ(declined.status, 0) << declined.output;
  fs::remove(home / "Resource/Mine.txt");
  test::CommandResult stopped = run_command(quorva + " generate --yes");
  EXPECT_EQ(stopped.status, 1);
  EXPECT_NE(stopped.output.find("WARNING, It's impossible to open the file:Resource/Mine.txt"),
            std::string::npos);
}

}  // namespace
}  // namespace quorva
