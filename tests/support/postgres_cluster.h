#pragma once

#include <filesystem>
#include <string>

namespace quorva::test {

/// A throwaway PostgreSQL cluster on a Unix socket under a temporary folder, started with
/// initdb and pg_ctl (as the postgres user when the tests run as root, since the server
/// refuses root), stopped and removed with the object.
class PostgresCluster {
 public:
  PostgresCluster();
  ~PostgresCluster();
  PostgresCluster(const PostgresCluster&) = delete;
  PostgresCluster& operator=(const PostgresCluster&) = delete;

  /// True when the cluster runs; otherwise why_not() says what is missing (skip the test).
  bool available() const { return running_; }
  const std::string& why_not() const { return why_not_; }

  /// Runs SQL through psql on the socket, stopping at the first error; returns the errors
  /// ("" when every statement succeeded).
  std::string run_sql(const std::string& sql);

 private:
  std::string tool(const std::string& name, const std::string& arguments) const;

  std::filesystem::path folder_;
  std::filesystem::path bin_;
  bool as_postgres_ = false;
  bool running_ = false;
  std::string why_not_;
};

}  // namespace quorva::test
