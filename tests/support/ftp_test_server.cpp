#include "support/ftp_test_server.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <fstream>
#include <thread>
#include <vector>

extern char** environ;

namespace quorva::test {

FtpTestServer::FtpTestServer(const std::filesystem::path& root, const std::string& user,
                             const std::string& password, const std::string& fault,
                             double seconds) {
  const std::filesystem::path port_file = root.parent_path() / (root.filename().string() + ".port");
  std::filesystem::remove(port_file);
  std::vector<std::string> words = {
      "/usr/bin/python3",
      std::string(QUORVA_SOURCE_DIR) + "/tests/support/zos_ftp_server.py",
      root.string(),
      port_file.string(),
      user,
      password};
  if (!fault.empty()) {
    words.push_back(fault);
    words.push_back(std::to_string(seconds));
  }
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  pid_t child = 0;
  if (::posix_spawn(&child, argv[0], nullptr, nullptr, argv.data(), environ) != 0) return;
  pid_ = child;
  for (int i = 0; i < 200 && port_ == 0; ++i) {
    std::ifstream in(port_file);
    if (!(in >> port_)) port_ = 0;
    if (port_ == 0) {
      int status = 0;
      if (::waitpid(pid_, &status, WNOHANG) == pid_) {
        pid_ = -1;
        return;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
  }
}

FtpTestServer::~FtpTestServer() {
  if (pid_ <= 0) return;
  ::kill(pid_, SIGKILL);
  int status = 0;
  ::waitpid(pid_, &status, 0);
}

}  // namespace quorva::test
