// A generation killed at any moment (power cut, kill -9, a closed terminal) leaves the
// program that was there before, or the new one whole: never a part of either.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <sstream>
#include <string>
#include <thread>

#include "support/run_command.h"

namespace quorva::test {
namespace {

constexpr int kTemplateLines = 150000;

// A template long enough that the output phase takes a while.
void write_long_template(const std::filesystem::path& home) {
  std::string text = "quormem=LONG-1\nnumlines=" + std::to_string(kTemplateLines) +
                     "\nclient=1.33\n[THE CODE BEGINS HERE]\n";
  for (int i = 0; i < kTemplateLines; ++i)
    text += "C           DISPLAY '<++++++> LINE " + std::to_string(i) + "'.\n";
  write_text(home / "Resource/Long.txt", text);
  write_text(home / "Resource/QVconfig.ini",
             read_text(home / "Resource/QVconfig.ini") + "ALTERNATIVE_QUORMEM_FILE=Long.txt\n");
}

pid_t start_generation(const std::filesystem::path& home) {
  const pid_t child = ::fork();
  if (child == 0) {
    const int null = ::open("/dev/null", O_RDWR);
    ::dup2(null, 0);
    ::dup2(null, 1);
    ::dup2(null, 2);
    ::execl(QUORVA_BINARY, QUORVA_BINARY, "--home", home.c_str(), "--yes", "generate",
            static_cast<char*>(nullptr));
    ::_exit(127);
  }
  return child;
}

TEST(InterruptedGeneration, KilledAtAnyMomentLeavesTheOldProgramOrTheNewOneWhole) {
  QuorvaHome wf(QuorvaHome::kSample);
  write_long_template(wf.path);
  CommandResult first = wf.run("--yes generate");
  ASSERT_EQ(first.status, 0) << first.output;
  // The command names the program it wrote on a line of its own.
  std::filesystem::path program;
  std::istringstream lines(first.output);
  for (std::string line; std::getline(lines, line);)
    if (line.ends_with(".txt") && std::filesystem::exists(line)) program = line;
  ASSERT_FALSE(program.empty()) << first.output;
  const std::string complete = read_text(program);
  ASSERT_GT(complete.size(), 1000000u);

  // How long a whole run takes, to spread the kills over it.
  const auto started = std::chrono::steady_clock::now();
  int status = 0;
  ::waitpid(start_generation(wf.path), &status, 0);
  const auto run_time = std::chrono::steady_clock::now() - started;
  ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);

  const std::string previous = "       PROGRAM-ID. PREVIOUS.\n";
  constexpr int kKills = 12;
  int killed_while_running = 0;
  for (int i = 0; i < kKills; ++i) {
    write_text(program, previous);
    const pid_t child = start_generation(wf.path);
    ASSERT_GT(child, 0);
    std::this_thread::sleep_for(run_time * i / kKills);
    killed_while_running += ::kill(child, SIGKILL) == 0;
    ::waitpid(child, &status, 0);
    const std::string after = read_text(program);
    EXPECT_TRUE(after == previous || after == complete)
        << "kill " << i << ": " << after.size() << " bytes";
  }
  EXPECT_GT(killed_while_running, kKills / 2);
}

}  // namespace
}  // namespace quorva::test
