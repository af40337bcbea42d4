#include "host/host_transfer.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/ftp_client.h"
#include "support/faulty_disk.h"
#include "support/ftp_test_server.h"
#include "support/run_command.h"

namespace quorva {
namespace {

namespace fs = std::filesystem;
using test::read_text;
using test::write_text;

constexpr const char* kPassword = "S3CRETPW";
constexpr const char* kOld = "OLD VERSION\n";
constexpr const char* kNew = "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. CUSTMOV.\n";
constexpr const char* kNoServer = "no FTP test server (python3-pyftpdlib)";

// A working folder whose program CUSTMOV goes to USER01.SOURCE on the test server.
struct HostSetup {
  test::QuorvaHome home{test::QuorvaHome::kSample};  // the sample program CUSTMOV
  fs::path programs = home.scratch.path() / "programs";
  fs::path root = home.scratch.path() / "host";
  fs::path member = root / "USER01.SOURCE" / "CUSTMOV";

  HostSetup() {
    fs::create_directories(root / "USER01.SOURCE");
    fs::create_directories(programs);
    write_text(programs / "CUSTMOV.txt", kNew);
  }
  void user_data(const std::string& address, const std::string& password = kPassword) {
    write_text(home.path / "Resource/User.dat",
               "ipaddress=" + address + "\ntsolibrary=USER01.SOURCE\nsourcedirectory=" +
                   programs.string() + "/\npswtso=" + password +
                   "\ntsouser=USER01\nnomecognome=Mario Rossi\nsocieta=Example\n");
  }
  // Starts the test server, with a fault or "tls", and points the user data at it; false
  // when it cannot start.
  bool serve(const std::string& fault = "", double seconds = 0) {
    server = std::make_unique<test::FtpTestServer>(root, "USER01", kPassword, fault, seconds);
    if (server->running()) user_data(server->address());
    return server->running();
  }
  void option(const std::string& line) {
    const fs::path config = home.path / "Resource/QVconfig.ini";
    write_text(config, read_text(config) + line + "\n");
  }
  // The password may stand in User.dat alone.
  std::string everything_but_user_data(const std::string& output) const {
    std::string all = output;
    for (const auto& entry : fs::recursive_directory_iterator(home.scratch.path()))
      if (entry.is_regular_file() && entry.path().filename() != "User.dat" &&
          entry.path().parent_path() != root / "USER01.SOURCE")
        all += read_text(entry.path());
    return all;
  }

  std::unique_ptr<test::FtpTestServer> server;
};

struct SendCase {
  const char* name;
  const char* fault;  // server fault, "" none, "down" no server
  double seconds;
  bool member_before;  // the member exists on the host
  bool wrong_password;
  const char* option;   // QVconfig lines, or ""; @CA@ stands for the server's certificate
  const char* program;  // the program's text, nullptr: kNew
  int status;
  const char* member_after;  // "old", "new", "empty" (the host emptied it), "cut" (truncated)
  bool backup;
  const char* says;
};

TEST(HostTransfer, SendNeverLosesTheMember) {
  const std::string too_long = std::string(81, 'X') + "\n";
  const SendCase cases[] = {
      {"replaces", "", 0, true, false, "", nullptr, 0, "new", true, "already existent"},
      {"new member", "", 0, false, false, "", nullptr, 0, "new", false, ""},
      {"host down", "down", 0, true, false, "", nullptr, 1, "old", false, "does not answer"},
      {"wrong password", "", 0, true, true, "", nullptr, 1, "old", false, "refused the user"},
      {"in use", "in-use", 0, true, false, "", nullptr, 1, "old", false, "in use on the host"},
      {"dropped in backup", "drop-retr", 0, true, false, "", nullptr, 1, "old", false, "dropped"},
      {"dropped in send", "drop-stor", 0, true, false, "", nullptr, 1, "empty", true,
       "previous version is kept in the backup"},
      {"slow host", "slow-retr", 4, true, false, "FTP_TIMEOUT=1", nullptr, 1, "old", false,
       "within 1 seconds"},
      {"line past LRECL", "", 0, true, false, "", too_long.c_str(), 1, "old", false,
       "line 1, column 81"},
      {"cut by the host", "", 0, true, false, "FTP_LRECL=100", too_long.c_str(), 1, "cut", true,
       "cut lines longer than the record length"},
      {"SITE accepted", "", 0, true, false, "FTP_RECFM=FB", nullptr, 0, "new", true, ""},
      {"SITE refused", "", 0, true, false, "FTP_SBDATACONN=IBM-9999/ISO8859-1", nullptr, 1, "old",
       true, "Unrecognized parameter"},
      // FTPS with explicit AUTH TLS goes only over a verified connection: it stops before
      // touching the member when the certificate is not trusted or the host speaks no TLS.
      {"FTPS verified", "tls", 0, true, false, "FTP_TLS=EXPLICIT\nFTP_CA_FILE=@CA@", nullptr, 0,
       "new", true, ""},
      {"FTPS untrusted", "tls", 0, true, false, "FTP_TLS=EXPLICIT", nullptr, 1, "old", false, ""},
      {"FTPS to a host without TLS", "", 0, true, false, "FTP_TLS=EXPLICIT", nullptr, 1, "old",
       false, ""},
  };
  for (const SendCase& c : cases) {
    SCOPED_TRACE(c.name);
    HostSetup setup;
    if (c.member_before) write_text(setup.member, kOld);
    if (c.program) write_text(setup.programs / "CUSTMOV.txt", c.program);
    std::string option = c.option;
    if (option.find("@CA@") != std::string::npos)
      option.replace(option.find("@CA@"), 4, setup.root.string() + ".crt");
    if (!option.empty()) setup.option(option);
    const bool down = std::string(c.fault) == "down";
    if (!setup.serve(down ? "" : c.fault, c.seconds))
      GTEST_SKIP() << kNoServer << (*c.fault == 't' ? ", python3-openssl" : "");
    if (down || c.wrong_password)
      setup.user_data(down ? "127.0.0.1:1" : setup.server->address(),
                      c.wrong_password ? "WRONGPW" : kPassword);
    test::CommandResult run = setup.home.run("--no send");
    EXPECT_EQ(run.status, c.status) << run.output;
    EXPECT_NE(run.output.find(c.says), std::string::npos) << run.output;
    const std::string after = read_text(setup.member);
    const std::string want = std::string(c.member_after) == "cut"   ? std::string(80, 'X') + "\n"
                             : std::string(c.member_after) == "new" ? kNew
                             : std::string(c.member_after) == "old" ? (c.member_before ? kOld : "")
                                                                    : "";
    EXPECT_EQ(after, want);
    const fs::path backup = setup.programs / "CUSTMOV_1.BKP";
    EXPECT_EQ(fs::exists(backup), c.backup);
    if (c.backup) EXPECT_EQ(read_text(backup), kOld);
    EXPECT_FALSE(fs::exists(setup.home.path / "temp/FtpQuorva.ini"));
    EXPECT_FALSE(fs::exists(setup.home.path / "temp/dummy_file.txt"));
    EXPECT_EQ(setup.everything_but_user_data(run.output).find(kPassword), std::string::npos);
    if (c.backup && c.status == 0)
      EXPECT_NE(read_text(setup.home.path / "warning.log").find("CUSTMOV_1.BKP"),
                std::string::npos);
  }
}

struct JclCase {
  const char* name;
  const char* jcl_library;  // FTP_JCL_LIBRARY, "" not set
  bool edited;              // the JCL file changed by hand since the generation
  int status;
  const char* source_after;  // the program's member afterwards
  const char* jcl_after;     // the JCL member afterwards
  const char* says;
};

// The run JCL beside the program goes to its own library after a backup of its own, and
// the source library gets the program alone.
TEST(HostTransfer, JclGoesToItsOwnLibraryAndTheProgramAlone) {
  const std::string jcl = "//CUSTMOVJ JOB (ACCT)\n//RUN      EXEC PGM=CUSTMOV\n";
  const JclCase cases[] = {
      {"sent to its library", "USER01.JCL", false, 0, kNew, "new", "CUSTMOV_J_2.BKP"},
      {"no JCL library", "", false, 0, kNew, "old", "CUSTMOV.jcl is not sent"},
      {"library missing on the host", "USER01.NOJCL", false, 1, kNew, "old",
       "Data set USER01.NOJCL not found"},
      {"JCL edited since", "USER01.JCL", true, 1, kOld, "old", "is not the JCL of"},
  };
  for (const JclCase& c : cases) {
    SCOPED_TRACE(c.name);
    HostSetup setup;
    fs::create_directories(setup.root / "USER01.JCL");
    const fs::path jcl_member = setup.root / "USER01.JCL" / "CUSTMOV";
    write_text(jcl_member, "OLD JCL\n");
    write_text(setup.member, kOld);
    write_text(setup.programs / "CUSTMOV.txt", std::string(kNew) + jcl);
    write_text(setup.programs / "CUSTMOV.jcl", c.edited ? jcl + "//EXTRA DD *\n" : jcl);
    write_text(setup.programs / "CUSTMOV_J_1.BKP", "an earlier backup of the JCL\n");
    if (*c.jcl_library) setup.option(std::string("FTP_JCL_LIBRARY=") + c.jcl_library);
    if (!setup.serve()) GTEST_SKIP() << kNoServer;
    test::CommandResult run = setup.home.run("--no send");
    EXPECT_EQ(run.status, c.status) << run.output;
    EXPECT_NE(run.output.find(c.says), std::string::npos) << run.output;
    EXPECT_EQ(read_text(setup.member), c.source_after);
    EXPECT_EQ(read_text(jcl_member), std::string(c.jcl_after) == "new" ? jcl : "OLD JCL\n");
    // Backups of the program and of the JCL never share a name.
    EXPECT_EQ(read_text(setup.programs / "CUSTMOV_1.BKP"), c.status == 0 || !c.edited ? kOld : "");
    const bool jcl_backup = std::string(c.jcl_after) == "new";
    EXPECT_EQ(fs::exists(setup.programs / "CUSTMOV_J_2.BKP"), jcl_backup);
    if (jcl_backup) EXPECT_EQ(read_text(setup.programs / "CUSTMOV_J_2.BKP"), "OLD JCL\n");
    EXPECT_EQ(read_text(setup.programs / "CUSTMOV_J_1.BKP"), "an earlier backup of the JCL\n");
    EXPECT_FALSE(fs::exists(setup.home.path / "temp/FtpQuorva.ini"));
  }
}

// A routine's linkage copybook goes to the copy library after a backup of its own; without
// a copy library it stays here and the send says so.
TEST(HostTransfer, LinkageCopybookGoesToTheCopyLibrary) {
  const std::string copybook = "       01  LK-AREA.\n           05 LK-REQUEST PIC X(80).\n";
  for (const bool library : {true, false}) {
    SCOPED_TRACE(library ? "copy library set" : "no copy library");
    HostSetup setup;
    fs::create_directories(setup.root / "USER01.COPYLIB");
    const fs::path remote = setup.root / "USER01.COPYLIB" / "CUSTMOVL";
    write_text(remote, "OLD AREA\n");
    write_text(setup.member, kOld);
    write_text(setup.programs / "CUSTMOVL.cpy", copybook);
    if (library) setup.option("FTP_COPY_LIBRARY=USER01.COPYLIB");
    if (!setup.serve()) GTEST_SKIP() << kNoServer;
    test::CommandResult run = setup.home.run("--no send");
    EXPECT_EQ(run.status, 0) << run.output;
    EXPECT_EQ(read_text(setup.member), kNew);
    EXPECT_EQ(read_text(remote), library ? copybook : "OLD AREA\n");
    EXPECT_EQ(fs::exists(setup.programs / "CUSTMOV_C_1.BKP"), library);
    if (library)
      EXPECT_EQ(read_text(setup.programs / "CUSTMOV_C_1.BKP"), "OLD AREA\n");
    else
      EXPECT_NE(run.output.find("CUSTMOVL.cpy is not sent"), std::string::npos) << run.output;
  }
}

TEST(HostTransfer, DclgenDownloadFetchesOnlyNewIncludes) {
  HostSetup setup;
  fs::create_directories(setup.root / "USER01.DCLGEN");
  write_text(setup.root / "USER01.DCLGEN" / "ACCOUNTS", "      * DCLGEN TABLE(ACCOUNTS)\n");
  if (!setup.serve()) GTEST_SKIP() << kNoServer;
  write_text(setup.home.path / "temp/key2value.dat", "INCLU-1S=ACCOUNTS\nINCLU-1F=BRANCHES\n");
  test::CommandResult first = setup.home.run("dclgen download --library USER01.DCLGEN");
  EXPECT_EQ(first.status, 1) << first.output;
  EXPECT_NE(first.output.find("Cannot find the following DCLGEN file"), std::string::npos);
  EXPECT_NE(first.output.find("BRANCHES.DCL"), std::string::npos);
  EXPECT_EQ(read_text(setup.programs / "ACCOUNTS.DCL"), "      * DCLGEN TABLE(ACCOUNTS)\n");
  write_text(setup.programs / "BRANCHES.DCL", "");
  test::CommandResult second = setup.home.run("dclgen download");
  EXPECT_EQ(second.status, 0) << second.output;
  EXPECT_NE(second.output.find("You haven't specified any new INCLUDE"), std::string::npos);
  EXPECT_EQ(setup.everything_but_user_data(first.output + second.output).find(kPassword),
            std::string::npos);
}

TEST(HostTransfer, MemberChangedOnTheHostIsAskedAbout) {
  HostSetup setup;
  if (!setup.serve()) GTEST_SKIP() << kNoServer;
  EXPECT_EQ(setup.home.run("--no send").status, 0);
  // Sent again unchanged: no question.
  test::CommandResult again = setup.home.run("--no send");
  EXPECT_EQ(again.status, 0) << again.output;
  EXPECT_EQ(again.output.find("changed on the host"), std::string::npos) << again.output;
  write_text(setup.member, "CHANGED ON HOST\n");
  test::CommandResult declined = setup.home.run("--no send");
  EXPECT_EQ(declined.status, 1) << declined.output;
  EXPECT_NE(declined.output.find("was changed on the host"), std::string::npos) << declined.output;
  EXPECT_EQ(read_text(setup.member), "CHANGED ON HOST\n");
  test::CommandResult accepted = setup.home.run("--yes send");
  EXPECT_EQ(accepted.status, 0) << accepted.output;
  EXPECT_NE(accepted.output.find("- 1: CHANGED ON HOST"), std::string::npos) << accepted.output;
  EXPECT_EQ(read_text(setup.member), kNew);
  EXPECT_FALSE(fs::exists(setup.home.path / "temp/FtpCheck.tmp"));
  EXPECT_FALSE(fs::exists(setup.home.path / "temp/FtpQuorva.ini"));
}

TEST(HostTransfer, PasswordTypedAtEachTransfer) {
  HostSetup setup;
  if (!setup.serve()) GTEST_SKIP() << kNoServer;
  setup.user_data(setup.server->address(), "KEPTPW");  // not the host's: it must not be used
  setup.option("FTP_ASK_PASSWORD=ON");
  test::CommandResult wrong = setup.home.run("--no send", "NOTIT\n");
  EXPECT_EQ(wrong.status, 1) << wrong.output;
  EXPECT_NE(wrong.output.find("refused the user or the password"), std::string::npos);
  test::CommandResult right = setup.home.run("--no send", kPassword + std::string("\n"));
  EXPECT_EQ(right.status, 0) << right.output;
  EXPECT_EQ(read_text(setup.member), kNew);
  EXPECT_EQ(setup.everything_but_user_data(right.output).find(kPassword), std::string::npos);
}

TEST(HostTransfer, FullLocalDiskStopsBeforeTheSend) {
  test::TempWorkingFolder folder;
  const fs::path root = folder.path() / "host";
  write_text(root / "USER01.SOURCE" / "CUSTMOV", kOld);
  write_text(folder.path() / "CUSTMOV.txt", kNew);
  test::FtpTestServer server(root, "USER01", kPassword);
  if (!server.running()) GTEST_SKIP() << kNoServer;
  Result<FtpScript> script =
      parse_ftp_script(send_script(server.address(), "USER01", kPassword,
                                   "'USER01.SOURCE(CUSTMOV)'", "CUSTMOV.txt", "CUSTMOV_1.BKP"));
  ASSERT_TRUE(script.ok());
  test::FaultyDisk full(".BKP");
  ScriptOutcome outcome = run_ftp_script(*script, HostOptions{});
  ASSERT_EQ(outcome.outcomes.size(), 2u);
  EXPECT_EQ(outcome.outcomes[0].kind, TransferOutcome::kFailed);
  EXPECT_EQ(outcome.outcomes[1].kind, TransferOutcome::kSkipped);
  EXPECT_FALSE(outcome.all_done(*script));
  EXPECT_EQ(read_text(root / "USER01.SOURCE" / "CUSTMOV"), kOld);
}

}  // namespace
}  // namespace quorva
