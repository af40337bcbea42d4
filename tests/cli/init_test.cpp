#include <gtest/gtest.h>

#include "support/run_command.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace quorva {
namespace {

using test::run_command;
using test::shell_quote;
using test::TempWorkingFolder;

const std::string kQuorva = shell_quote(QUORVA_BINARY);

TEST(CommandLine, InitAndInstallationStatuses) {
  TempWorkingFolder scratch;
  const std::string dir = (scratch.path() / "wf").string();
  const struct {
    std::string args;
    int status;
    const char* says;
  } steps[] = {
      {"--version", 0, "quorva "},
      {"--help", 0, "init"},
      {"", 2, "subcommand"},
      {"init " + shell_quote(dir), 0, "Working folder ready"},
      {"init " + shell_quote(dir), 1, "already exists"},
      {"init --force " + shell_quote(dir), 0, "Working folder ready"},
      {"--home " + shell_quote(dir + "-missing") + " init --help", 0, "DIR"},
      {"--yes --no init x", 2, "excludes"},
      {"nonsense", 2, "subcommand"},
  };
  for (const auto& step : steps) {
    test::CommandResult r = run_command(kQuorva + " " + step.args);
    EXPECT_EQ(r.status, step.status) << step.args << "\n" << r.output;
    EXPECT_NE(r.output.find(step.says), std::string::npos) << step.args << "\n" << r.output;
  }
  EXPECT_TRUE(fs::exists(fs::path(dir) / "Resource" / "User.dat"));
}

}  // namespace
}  // namespace quorva
