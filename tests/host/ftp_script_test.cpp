#include "host/ftp_script.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "host/curl_library.h"
#include "host/host_lines.h"
#include "support/temp_folder.h"

namespace quorva {
namespace {

using test::TempWorkingFolder;
using test::write_text;

TEST(FtpScript, SendScriptIsByteForByte) {
  EXPECT_EQ(
      send_script("192.0.2.10", "USER01", "SECRET1", remote_member("'USER01.SOURCE'", "PAYROLL"),
                  "/p/PAYROLL.txt", "/p/PAYROLL_1.BKP"),
      "open 192.0.2.10\nUSER01\nSECRET1\n\nrecv 'USER01.SOURCE(PAYROLL)' \"/p/PAYROLL_1.BKP\""
      "\n\nsend \"/p/PAYROLL.txt\" 'USER01.SOURCE(PAYROLL)'\n\nbye");
  EXPECT_EQ(
      download_script("h", "U", "P", {{"'L.DCL(A)'", "/p/A.DCL"}, {"'L.DCL(B)'", "/p/B.DCL"}}),
      "open h\nU\nP\n\nrecv 'L.DCL(A)' \"/p/A.DCL\"\nrecv 'L.DCL(B)' \"/p/B.DCL\"\n\nbye");
  EXPECT_EQ(remote_member("USER01.SOURCE", "PAYROLL"), "'USER01.SOURCE(PAYROLL)'");
  // The JCL after the program, whose lines stay as they are.
  EXPECT_EQ(send_script("h", "U", "P", "'L.S(P)'", "/p/P.txt", "/p/P_1.BKP",
                        {{"'L.JCL(P)'", "/p/P.jcl", "/p/P_J_1.BKP"}}),
            "open h\nU\nP\n\nrecv 'L.S(P)' \"/p/P_1.BKP\"\n\nsend \"/p/P.txt\" 'L.S(P)'"
            "\n\nrecv 'L.JCL(P)' \"/p/P_J_1.BKP\"\n\nsend \"/p/P.jcl\" 'L.JCL(P)'\n\nbye");
}

TEST(FtpScript, ReadsBackWhatItWrites) {
  Result<FtpScript> script = parse_ftp_script(
      send_script("127.0.0.1:2121", "USER01", "PW 1", "'L.S(P)'", "/a b/P.txt", "/a b/P_1.BKP"));
  ASSERT_TRUE(script.ok()) << script.message();
  EXPECT_EQ(script->host, "127.0.0.1:2121");
  EXPECT_EQ(script->password, "PW 1");
  ASSERT_EQ(script->commands.size(), 2u);
  EXPECT_EQ(script->commands[0].kind, FtpCommand::kRecv);
  EXPECT_EQ(script->commands[0].remote, "'L.S(P)'");
  EXPECT_EQ(script->commands[0].local, "/a b/P_1.BKP");
  EXPECT_EQ(script->commands[1].kind, FtpCommand::kSend);
  EXPECT_EQ(script->commands[1].local, "/a b/P.txt");
  for (const char* bad : {"", "connect h\nu\np\n", "open h\nu\np\n\nsend \"x 'L(P)'\n",
                          "open h\nu\np\n\ndelete 'L(P)'\n"})
    EXPECT_FALSE(parse_ftp_script(bad).ok()) << bad;
}

TEST(FtpScript, BackupTakesTheFirstFreeNumberAndScriptIsOwnerOnly) {
  TempWorkingFolder folder;
  write_text("PROG_1.BKP", "a");
  write_text("PROG_2.BKP", "b");
  EXPECT_EQ(backup_name("", "PROG"), "PROG_3.BKP");
  EXPECT_EQ(backup_name("", "OTHER"), "OTHER_1.BKP");
  ASSERT_TRUE(write_ftp_script("open h\nu\nSECRET\n").ok());
  struct stat info {};
  ASSERT_EQ(::stat(kFtpScriptFile, &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0600u);
  write_text(kTransferMarkerFile, "");
  ASSERT_TRUE(remove_transfer_files().ok());
  EXPECT_EQ(::stat(kFtpScriptFile, &info), -1);
  EXPECT_EQ(::stat(kTransferMarkerFile, &info), -1);
}

TEST(HostLines, RefusesWithFileLineAndColumn) {
  TempWorkingFolder folder;
  const std::string ok80(80, 'A');
  struct Case {
    std::string text;
    int limit;
    const char* pages;
    const char* says;  // nullptr: accepted
  } cases[] = {
      {ok80 + "\n" + ok80 + "\r\n", 80, "", nullptr},
      {"A\n" + ok80 + "B\n", 80, "", "P.txt, line 2, column 81"},
      {"A\nB\tC\n", 80, "", "X'09' at P.txt, line 2, column 2"},
      {"PRICE \xA4\n", 80, "", nullptr},
      {"PRICE \xA4\n", 80, "IBM-1141/ISO8859-1", "X'A4' at P.txt, line 1, column 7"},
      {std::string(77, 'A') + "\n", 76, "", "column 77"},
  };
  for (const Case& c : cases) {
    Status checked = check_host_lines("P.txt", c.text, c.limit, c.pages);
    if (!c.says) {
      EXPECT_TRUE(checked.ok()) << checked.message();
      continue;
    }
    ASSERT_FALSE(checked.ok()) << c.text;
    EXPECT_NE(checked.message().find(c.says), std::string::npos) << checked.message();
  }
}

// The library is found at run time, as an installed quorva finds it, and works: a handle
// is made, takes an option, and escapes a member name the way the client will use it.
TEST(CurlLibrary, LoadsAtRunTimeAndWorks) {
  Result<const CurlLibrary*> curl = curl_library();
  ASSERT_TRUE(curl.ok()) << curl.status().message();
  CURL* handle = (*curl)->easy_init();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ((*curl)->easy_setopt(handle, CURLOPT_FTP_USE_EPSV, 0L), CURLE_OK);
  char* escaped = (*curl)->easy_escape(handle, "'A.B(C)'", 0);
  ASSERT_NE(escaped, nullptr);
  EXPECT_STREQ(escaped, "%27A.B%28C%29%27");
  (*curl)->free(escaped);
  EXPECT_STRNE((*curl)->easy_strerror(CURLE_COULDNT_CONNECT), "");
  (*curl)->easy_cleanup(handle);
}

}  // namespace
}  // namespace quorva
