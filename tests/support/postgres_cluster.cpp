#include "support/postgres_cluster.h"

#include <algorithm>
#include <random>
#include <vector>

#include <unistd.h>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva::test {

namespace {

std::string trimmed(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
  return text;
}

// The folder of initdb: on the PATH, else the newest of the distribution's versioned
// folders, where Debian keeps it off the PATH.
fs::path postgres_bin() {
  CommandResult found = run_command("command -v initdb");
  if (found.status == 0 && !trimmed(found.output).empty())
    return fs::path(trimmed(found.output)).parent_path();
  std::vector<fs::path> candidates;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", ec))
    if (fs::exists(entry.path() / "bin" / "initdb", ec)) candidates.push_back(entry.path() / "bin");
  if (candidates.empty()) return {};
  std::sort(candidates.begin(), candidates.end(), [](const fs::path& a, const fs::path& b) {
    return std::stoi("0" + a.parent_path().filename().string()) <
           std::stoi("0" + b.parent_path().filename().string());
  });
  return candidates.back();
}

}  // namespace

PostgresCluster::PostgresCluster() {
  bin_ = postgres_bin();
  if (bin_.empty()) {
    why_not_ = "initdb is not installed";
    return;
  }
  fs::path pg_ctl = bin_ / "pg_ctl";
  if (!fs::exists(pg_ctl)) pg_ctl = trimmed(run_command("command -v pg_ctl").output);
  if (pg_ctl.empty() || !fs::exists(pg_ctl)) {
    why_not_ = "pg_ctl is not installed";
    return;
  }
  psql_ = fs::exists(bin_ / "psql") ? (bin_ / "psql").string()
                                    : trimmed(run_command("command -v psql").output);
  if (psql_.empty()) {
    why_not_ = "psql is not installed";
    return;
  }
  as_postgres_ = geteuid() == 0;
  if (as_postgres_ && run_command("id -u postgres").status != 0) {
    why_not_ = "the postgres user is missing (the server refuses to run as root)";
    return;
  }
  std::random_device device;
  for (int attempt = 0; attempt < 100 && folder_.empty(); ++attempt) {
    fs::path candidate = fs::temp_directory_path() / ("quorva-pg-" + std::to_string(device()));
    if (fs::create_directory(candidate)) folder_ = candidate;
  }
  if (folder_.empty()) {
    why_not_ = "no temporary folder for the cluster";
    return;
  }
  if (as_postgres_) run_command("chown postgres: " + shell_quote(folder_.string()));
  std::string data = (folder_ / "data").string();
  CommandResult init =
      run_command(as_owner(shell_quote((bin_ / "initdb").string()) + " -D " + shell_quote(data) +
                           " -A trust -U postgres -E UTF8 --locale=C -N"));
  if (init.status != 0) {
    why_not_ = "initdb failed: " + init.output;
    return;
  }
  // No TCP listener: the socket in the cluster's own folder is all the tests use.
  std::string options = "-c listen_addresses='' -k " + folder_.string() + " -F";
  CommandResult start =
      run_command(as_owner(shell_quote(pg_ctl.string()) + " -D " + shell_quote(data) + " -l " +
                           shell_quote((folder_ / "server.log").string()) + " -o " +
                           shell_quote(options) + " -w -t 60 start"));
  if (start.status != 0) {
    why_not_ = "the server did not start: " + start.output + read_text(folder_ / "server.log");
    return;
  }
  running_ = true;
  bin_pg_ctl_ = pg_ctl;
}

PostgresCluster::~PostgresCluster() {
  if (running_)
    run_command(as_owner(shell_quote(bin_pg_ctl_.string()) + " -D " +
                         shell_quote((folder_ / "data").string()) + " -m immediate -w stop"));
  std::error_code ec;
  if (!folder_.empty()) fs::remove_all(folder_, ec);
}

std::string PostgresCluster::as_owner(const std::string& command) const {
  return as_postgres_ ? "runuser -u postgres -- " + command : command;
}

bool PostgresCluster::psql(const std::string& sql, std::string& output) {
  if (!running_) {
    output = "the cluster is not running: " + why_not_;
    return false;
  }
  fs::path script = folder_ / ("script" + std::to_string(++script_count_) + ".sql");
  // Notices ("already exists, skipping") are not errors.
  write_text(script, "SET client_min_messages TO warning;\n" + sql);
  CommandResult result = run_command(shell_quote(psql_) + " -X -q -A -t -v ON_ERROR_STOP=1 -h " +
                                     shell_quote(folder_.string()) +
                                     " -U postgres -d postgres -f " + shell_quote(script.string()));
  std::error_code ec;
  fs::remove(script, ec);
  output = result.output;
  return result.status == 0;
}

std::string PostgresCluster::run_sql(const std::string& sql) {
  std::string output;
  if (psql(sql, output)) return "";
  return output.empty() ? "psql failed" : output;
}

std::string PostgresCluster::query(const std::string& sql) {
  std::string output;
  psql(sql, output);
  return output;
}

}  // namespace quorva::test
