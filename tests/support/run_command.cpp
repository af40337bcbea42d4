#include "support/run_command.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

namespace quorva::test {

CommandResult run_command(const std::string& command_line) {
  CommandResult result;
  std::FILE* pipe = ::popen(("(" + command_line + ") </dev/null 2>&1").c_str(), "r");
  if (!pipe) return result;
  char buffer[4096];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) result.output.append(buffer, n);
  int status = ::pclose(pipe);
  if (status != -1 && WIFEXITED(status)) result.status = WEXITSTATUS(status);
  return result;
}

std::string shell_quote(const std::string& text) {
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

CommandResult quorva(const std::string& arguments, const std::string& input) {
  const std::string feed = input.empty() ? "" : "printf '%s' " + shell_quote(input) + " | ";
  return run_command(feed + shell_quote(QUORVA_BINARY) + " " + arguments);
}

QuorvaHome::QuorvaHome(Content content) : path(scratch.path() / "wf") {
  EXPECT_EQ(quorva(std::string("init ") + (content == kSample ? "--sample " : "") +
                   shell_quote(path.string()))
                .status,
            0);
}

CommandResult QuorvaHome::run(const std::string& arguments, const std::string& input) const {
  return quorva("--home " + shell_quote(path.string()) + " " + arguments, input);
}

void QuorvaHome::set_user_data() const {
  const CommandResult set =
      run("user set ip=127.0.0.1 library=QV.SOURCE user=QVUSER password=PW name=Tester "
          "company=Tests folder=" +
          shell_quote((path / "programs").string() + "/"));
  EXPECT_EQ(set.status, 0) << set.output;
}

std::string expect_steps(const QuorvaHome* home, const std::vector<CommandStep>& steps) {
  std::string outputs;
  for (const CommandStep& step : steps) {
    CommandResult r = home ? home->run(step.args, step.input) : quorva(step.args, step.input);
    EXPECT_EQ(r.status, step.status) << step.args << "\n" << r.output;
    EXPECT_NE(r.output.find(step.says), std::string::npos) << step.args << "\n" << r.output;
    outputs += r.output;
  }
  return outputs;
}

}  // namespace quorva::test
