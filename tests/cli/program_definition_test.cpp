#include <gtest/gtest.h>

#include <filesystem>

#include "support/members.h"
#include "support/run_command.h"
#include "support/temp_folder.h"

namespace quorva::test {
namespace {

bool present(const std::filesystem::path& path) {
  return std::filesystem::exists(path);
}

TEST(CommandLine, DefinesAWholeProgram) {
  QuorvaHome home;
  write_text(home.path / "programs/ACCOUNTS.DCL", small_member("PROD.ACCOUNTS", "DCLACCOUNTS"));
  write_text(home.path / "programs/BRANCHES.DCL", small_member("PROD.BRANCHES", "DCLBRANCHES"));
  expect_steps(
      &home,
      {{"--yes program new", 0, "Erasing Fields"},
       {"program set name=ACCTUPD language=cobol kind=batch inputs=2 outputs=1 report=0 select=1 "
        "fetch=1 update=0 insert=0 delete=0 constants=off comments=on thru=on buffering=off "
        "stream=off jcl=on rollback=off commit=on parameters=1 "
        "'description=Updates the accounts from the daily movements'",
        0, ""},
       {"program set name=1ABC", 1, "The First Character of the Program Name cannot be"},
       {"program set kind=match", 1, "2 Files Match"},
       {"program set inputs=12", 1, "from 0 to 9"},
       {"program set colour=red", 2, "Unknown setting"},
       {"files input 1 --name ACCIN --desc 'Accounts of the day'", 0, "ACCIN"},
       {"files input 2 --name BRANIN --report-name BRANCHREP --desc 'Branches'", 0, "BRANIN"},
       {"files input 3 --name TOOMANY", 1, "beyond the 2 input files"},
       {"files output 1 --name ACCXLS --desc 'Accounts for Excel' --excel", 0,
        "EXCEL            : yes"},
       {"files output 1 --name TOOLONGNAME", 1, "8 characters"},
       {"db2 select 1 --owner '' --table '' --include ACCOUNTS --desc 'Read the account' "
        "--autofill on --auto-owner on",
        0, "TABLE NAME  : ACCOUNTS"},
       {"db2 fetch 1 --owner '' --table '' --include BRANCHES --cursor CSRBR1 --desc 'Branches of "
        "the account'",
        0, "OWNER       : PROD"},
       {"db2 update 1 --table X", 1, "beyond the 0 UPDATE accesses"},
       {"program show", 0, "Tot. Select:\t1 Tot. Fetch:\t1"}});

  EXPECT_EQ(read_text(home.path / "temp/Parbase.dat"),
            "nomeprogr=ACCTUPD\nlinguaggio=cobol\ntipoprogr=batch\ncostanti=off\nthru=on\n"
            "buffering=off\nstream=off\ncommenti=on\njcl=on\nfilein=2\nfileout=1\nreport=0\n"
            "select=1\nfetch=1\nupdate=0\ninsert=0\ndelete=0\nrollback=off\ncommit=on\n"
            "parametri=1\ndescprogr0=Updates the accounts from the daily movements\n");
  const std::string keys = read_text(home.path / "temp/key2value.dat");
  for (const char* line :
       {"UIN1=ACCIN\nFILEIN1=ACCIN\n", "DESC-I1=Accounts of the day\n",
        "UIN2=BRANIN\nFILEIN2=BRANIN\nNOMTAB-2=BRANCHREP\nDESC-I2=Branches\n",
        "UOUT1=ACCXLS\nFILEOUT1=ACCXLS\n", "DESC-O1=Accounts for Excel\n", "T-1S=PROD\n",
        "TABEL-1S=ACCOUNTS\n", "LEV01-1S=DCLACCOUNTS\n", "INCLU-1S=ACCOUNTS\n",
        "DESCDB2-1S=Read the account\n", "T-1F=PROD\n", "TABEL-1F=BRANCHES\n", "CURS-1F=CSRBR1\n",
        "LEV01-1F=DCLBRANCHES\n", "INCLU-1F=BRANCHES\n", "DESCDB2-1F=Branches of the account\n"})
    EXPECT_NE(keys.find(line), std::string::npos) << line << keys;
  EXPECT_EQ(read_text(home.path / "temp/Detfiles.dat"), "fileout_excel=1\n");
  const std::string config = read_text(home.path / "Resource/QVconfig.ini");
  EXPECT_NE(config.find("Autofill_db2=ON\nAutoOwner_db2=ON\n"), std::string::npos) << config;
}

// Nothing of the sample survives into a new program: not its owner, table, cursor, column
// selections or Excel flag.
TEST(CommandLine, ANewProgramStartsEmpty) {
  QuorvaHome home(QuorvaHome::kSample);
  const char* definition[] = {"temp/Parbase.dat", "temp/key2value.dat", "temp/Detfiles.dat",
                              "temp/col_select.dat", "temp/col_fetch.dat"};
  for (const char* file : definition) EXPECT_TRUE(present(home.path / file)) << file;
  expect_steps(&home, {{"--yes program new", 0, "Erasing Fields"},
                       {"program set name=NEWPGM language=cobol select=1 fetch=1", 0, ""},
                       {"db2 fetch 1", 0, "CURSOR      : \n"}});
  const std::string keys = present(home.path / "temp/key2value.dat")
                               ? read_text(home.path / "temp/key2value.dat")
                               : std::string();
  for (const char* sample : {"BANKDB", "CUSTOMER", "CSRORD1", "MOVEIN"})
    EXPECT_EQ(keys.find(sample), std::string::npos) << sample << "\n" << keys;
  for (const char* file : {"temp/Detfiles.dat", "temp/col_select.dat", "temp/col_fetch.dat"})
    EXPECT_FALSE(present(home.path / file)) << file;
}

TEST(CommandLine, UserAndOptions) {
  QuorvaHome home;
  const std::string folder = (home.path / "programs").string();
  const std::string user =
      "user set ip=192.0.2.10 library=USER01.SOURCE user=USER01 "
      "password=SECRET1 'name=Mario Rossi' company=Esempio folder=";
  const std::string outputs = expect_steps(
      &home, {{"user set ip=192.0.2.10", 1, "You have not inserted all the required fields!!"},
              {user + "relative", 1, "must insert the folder as the following example"},
              {"--no " + user + shell_quote(folder + "/new"), 1, "you have to specify an Existing"},
              {user + shell_quote(folder), 0, ""},
              {"user show", 0,
               "pswtso          (password) : ********\ntsouser         (user)     : USER01"},
              {"user show", 0, "(folder)   : " + folder + "/\n"},
              {"options set cobol-break=250 descr-break=default", 1, "for COBOL must be within"},
              {"options set template=Missing.txt tips=OFF", 1, "is invalid, or not .TXT"},
              {"options set tips=maybe", 1, "must be ON or OFF"},
              {"options show", 0, "(cobol-break, 60-200)      : 200"}});
  EXPECT_EQ(outputs.find("SECRET1"), std::string::npos);
  EXPECT_EQ(read_text(home.path / "Resource/User.dat"),
            "ipaddress=192.0.2.10\ntsolibrary=USER01.SOURCE\nsourcedirectory=" + folder +
                "/\npswtso=SECRET1\ntsouser=USER01\nnomecognome=Mario Rossi\nsocieta=Esempio\n");
  const std::string config = read_text(home.path / "Resource/QVconfig.ini");
  EXPECT_NE(config.find("TIPS_AND_TRICKS=ON\n"), std::string::npos);
}

TEST(CommandLine, RefusedValuesAndFailedWritesExitOne) {
  QuorvaHome home;
  const std::string folder = (home.path / "programs").string();
  const std::string user =
      "user set ip=192.0.2.10 library=LIB user=USER01 password=S3CRET9 "
      "name=Mario company=Esempio folder=" +
      shell_quote(folder);
  std::string outputs = expect_steps(
      &home, {{"program set name=../../x", 1, "must be a member name"},
              {"program set name=pgm1 language=cobol inputs=1 select=1", 0, ""},
              {"files input 1 --desc " + shell_quote("x\nSECOND=INJECTED"), 1, "line break"},
              {"user set ip=" + shell_quote("1.2.3.4\nsourcedirectory=/tmp/"), 1, "line break"},
              {user, 0, ""}});
  EXPECT_NE(read_text(home.path / "temp/Parbase.dat").find("nomeprogr=PGM1\n"), std::string::npos);
  EXPECT_EQ(read_text(home.path / "temp/key2value.dat").find("SECOND"), std::string::npos);

  // A file that cannot be replaced (a folder stands in its place): the command says so,
  // exits 1, and the password reaches neither the terminal nor error.log.
  const struct {
    const char* file;
    std::string command;
  } failures[] = {
      {"temp/Parbase.dat", "program set name=NEWPGM"},
      {"temp/key2value.dat", "files input 1 --name ACCIN"},
      {"temp/key2value.dat", "db2 select 1 --table ORDERS"},
      {"Resource/User.dat", user},
      {"temp/default/Parbase.dat", "--yes program save-default"},
  };
  for (const auto& f : failures) {
    const std::filesystem::path path = home.path / f.file;
    const bool existed = std::filesystem::exists(path);
    const std::string text = read_text(path);
    std::filesystem::remove(path);
    std::filesystem::create_directories(path);
    outputs += expect_steps(&home, {{f.command, 1, "cannot open"}});
    std::filesystem::remove(path);
    if (existed) write_text(path, text);
  }
  EXPECT_EQ(outputs.find("S3CRET9"), std::string::npos);
  EXPECT_EQ(read_text(home.path / "error.log").find("S3CRET9"), std::string::npos);
}

TEST(CommandLine, InitAndInstallationStatuses) {
  TempWorkingFolder scratch;
  const std::string dir = shell_quote((scratch.path() / "wf").string());
  const std::string missing = shell_quote((scratch.path() / "wf-missing").string());
  expect_steps(nullptr, {{"--version", 0, "quorva "},
                         {"--help", 0, "init"},
                         {"", 2, "subcommand"},
                         {"init " + dir, 0, "Working folder ready"},
                         {"init " + dir, 1, "already exists"},
                         {"init --force " + dir, 0, "Working folder ready"},
                         {"--home " + missing + " init --help", 0, "DIR"},
                         {"--home " + missing + " program show", 2,
                          "isn't correctly installed. Repeat the install again\nTo make a working "
                          "folder: quorva init DIR (here: quorva init " +
                              (scratch.path() / "wf-missing").string() + ")"},
                         {"--yes --no init x", 2, "excludes"}});
  EXPECT_TRUE(std::filesystem::exists(scratch.path() / "wf/Resource/User.dat"));
}

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
                       {"collections use flags EXTRA", 0, ""},
                       {"collections set snippets INIT '[COBOL CUSTOM INITIALIZE]'", 0, "",
                        "           DISPLAY 'UP'.\n"},
                       {"collections use snippets INIT", 0, ""},
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
