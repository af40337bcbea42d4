#pragma once

#include <filesystem>
#include <string>

namespace quorva::test {

/// The z/OS-like FTP server of zos_ftp_server.py on 127.0.0.1 and a free port, serving
/// `root` (a folder per library, a file per member) to one user, with one fault when asked
/// ("in-use", "drop-retr", "drop-stor", "slow-retr" with its delay), or "tls": explicit
/// FTPS with a throwaway certificate for 127.0.0.1 written to ROOT.crt. Stopped when
/// destroyed. running() is false when the server could not start (no Python with pyftpdlib).
class FtpTestServer {
 public:
  FtpTestServer(const std::filesystem::path& root, const std::string& user,
                const std::string& password, const std::string& fault = "", double seconds = 0);
  ~FtpTestServer();
  FtpTestServer(const FtpTestServer&) = delete;
  FtpTestServer& operator=(const FtpTestServer&) = delete;

  bool running() const { return port_ > 0; }
  /// "127.0.0.1:PORT", as the host address of the user data.
  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }

 private:
  int pid_ = -1;
  int port_ = 0;
};

}  // namespace quorva::test
