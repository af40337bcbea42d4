#include "support/postgres_cluster.h"

#include <unistd.h>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {

namespace {

// The folder of initdb, pg_ctl and psql: where the initdb on the PATH really is, else the
// newest of the versioned folders where Debian keeps them off the PATH.
fs::path postgres_bin() {
  std::error_code ec;
  std::string found = run_command("command -v initdb").output;
  if (!found.empty()) return fs::canonical(found.substr(0, found.find('\n')), ec).parent_path();
  fs::path newest;
  auto version = [](const fs::path& bin) {
    return std::stoi("0" + bin.parent_path().filename().string());
  };
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", ec))
    if (fs::exists(entry.path() / "bin" / "initdb") &&
        (newest.empty() || version(entry.path() / "bin") > version(newest)))
      newest = entry.path() / "bin";
  return newest;
}

}  // namespace

PostgresCluster::PostgresCluster() : bin_(postgres_bin()) {
  for (const char* name : {"initdb", "pg_ctl", "psql"})
    if (bin_.empty() || !fs::exists(bin_ / name)) {
      why_not_ = std::string(name) + " is not installed";
      return;
    }
  as_postgres_ = geteuid() == 0;
  if (as_postgres_ && run_command("id -u postgres").status != 0) {
    why_not_ = "the postgres user is missing (the server refuses to run as root)";
    return;
  }
  folder_ = make_temp_folder("quorva-pg-");
  if (as_postgres_) run_command("chown postgres: " + shell_quote(folder_.string()));
  const std::string data = shell_quote((folder_ / "data").string());
  CommandResult init =
      run_command(tool("initdb", "-D " + data + " -A trust -U postgres -E UTF8 --locale=C -N"));
  if (init.status != 0) {
    why_not_ = "initdb failed: " + init.output;
    return;
  }
  // No TCP listener: the socket in the cluster's own folder is all the tests use.
  const std::string options = "-c listen_addresses='' -k " + folder_.string() + " -F";
  CommandResult start = run_command(
      tool("pg_ctl", "-D " + data + " -l " + shell_quote((folder_ / "server.log").string()) +
                         " -o " + shell_quote(options) + " -w -t 60 start"));
  running_ = start.status == 0;
  if (!running_)
    why_not_ = "the server did not start: " + start.output + read_text(folder_ / "server.log");
}

PostgresCluster::~PostgresCluster() {
  if (running_)
    run_command(
        tool("pg_ctl", "-D " + shell_quote((folder_ / "data").string()) + " -m immediate -w stop"));
  std::error_code ec;
  if (!folder_.empty()) fs::remove_all(folder_, ec);
}

std::string PostgresCluster::tool(const std::string& name, const std::string& arguments) const {
  const std::string command = shell_quote((bin_ / name).string()) + " " + arguments;
  return as_postgres_ ? "runuser -u postgres -- " + command : command;
}

std::string PostgresCluster::run_sql(const std::string& sql) {
  if (!running_) return "the cluster is not running: " + why_not_;
  const fs::path script = folder_ / "script.sql";
  // Notices ("already exists, skipping") are not errors.
  write_text(script, "SET client_min_messages TO warning;\n" + sql);
  CommandResult result =
      run_command(shell_quote((bin_ / "psql").string()) + " -X -q -A -t -v ON_ERROR_STOP=1 -h " +
                  shell_quote(folder_.string()) + " -U postgres -d postgres -f " +
                  shell_quote(script.string()));
  if (result.status == 0) return "";
  return result.output.empty() ? "psql failed" : result.output;
}

}  // namespace quorva::test
