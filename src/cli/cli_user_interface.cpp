#include "cli/cli_user_interface.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace quorva::cli {
namespace {

bool is_terminal(int fd) {
  return ::isatty(fd) == 1;
}

}  // namespace

std::string plain_text(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out += text[i];
  }
  while (!out.empty() && (out.back() == '\n' || out.back() == ' ')) out.pop_back();
  return out;
}

void CliUserInterface::end_progress_line() {
  if (progress_line_open_) std::cerr << '\n';
  progress_line_open_ = false;
}

void CliUserInterface::show_message(const std::string& text) {
  end_progress_line();
  std::cerr << plain_text(text) << '\n';
}

bool CliUserInterface::ask_yes_no(const std::string& title, const std::string& text) {
  end_progress_line();
  std::cerr << title << ": " << plain_text(text) << '\n';
  if (answer_) {
    std::cerr << (*answer_ ? "-> Yes (--yes)\n" : "-> No (--no)\n");
    return *answer_;
  }
  if (!is_terminal(STDIN_FILENO)) {
    std::cerr << "-> No (no terminal to ask; use --yes or --no)\n";
    return false;
  }
  for (;;) {
    std::cerr << "[y/n] " << std::flush;
    std::string reply;
    if (!std::getline(std::cin, reply)) return false;
    if (reply == "y" || reply == "Y" || reply == "yes" || reply == "Yes") return true;
    if (reply == "n" || reply == "N" || reply == "no" || reply == "No" || reply.empty())
      return false;
  }
}

void CliUserInterface::open_file(const std::string& path) {
  end_progress_line();
  std::cout << path << '\n';
}

void CliUserInterface::set_progress(const std::string& bar, int position, int range) {
  const int percent = range > 0 ? std::min(100, position * 100 / range) : 100;
  if (bar == progress_bar_ && percent == progress_percent_) return;
  if (bar != progress_bar_) end_progress_line();
  progress_bar_ = bar;
  progress_percent_ = percent;
  if (is_terminal(STDERR_FILENO)) {
    const int width = 30;
    const int filled = percent * width / 100;
    std::cerr << '\r' << bar << " [" << std::string(filled, '#') << std::string(width - filled, '.')
              << "] " << percent << "%" << std::flush;
    progress_line_open_ = true;
  } else if (percent == 100) {
    std::cerr << bar << ": done\n";
  }
}

void CliUserInterface::set_status(const std::string& text) {
  end_progress_line();
  std::string plain = plain_text(text);
  if (!plain.empty()) std::cerr << plain << '\n';
}

}  // namespace quorva::cli
