#include "support/run_command.h"

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
  for (char c : text) {
    if (c == '\'')
      quoted += "'\\''";
    else
      quoted += c;
  }
  return quoted + "'";
}

}  // namespace quorva::test
