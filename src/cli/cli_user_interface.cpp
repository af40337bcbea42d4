#include "cli/cli_user_interface.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <iostream>

namespace quorva::cli {
namespace {

bool is_terminal(int fd) {
  return ::isatty(fd) == 1;
}

// Questions whose Yes keeps the work from going ahead, in both languages, with what going
// ahead means for them.
struct HoldingQuestion {
  const char* english;
  const char* italian;
  const char* ahead_english;
  const char* ahead_italian;
};
const HoldingQuestion kHoldingQuestions[] = {
    {"You have used the same name for more than 1 cursor",
     "Hai usato lo stesso nome per piu' di 1 cursore",
     "the cursor names repeat and are saved as they are",
     "i nomi dei cursori si ripetono e sono salvati cosi'"},
};

const HoldingQuestion* holding_question(const std::string& text, bool& italian) {
  for (const HoldingQuestion& question : kHoldingQuestions) {
    if (text.find(question.english) != std::string::npos) {
      italian = false;
      return &question;
    }
    if (text.find(question.italian) != std::string::npos) {
      italian = true;
      return &question;
    }
  }
  return nullptr;
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
  shown_.push_back(plain_text(text));
}

bool CliUserInterface::has_shown(const std::string& text) const {
  const std::string plain = plain_text(text);
  return std::find(shown_.begin(), shown_.end(), plain) != shown_.end();
}

bool CliUserInterface::ask_yes_no(const std::string& title, const std::string& text) {
  end_progress_line();
  std::cerr << title << ": " << plain_text(text) << '\n';
  bool italian = false;
  const HoldingQuestion* holding = holding_question(text, italian);
  // The answer that lets the work go ahead, and the one that stops it.
  const bool ahead = holding == nullptr;
  if (answer_) {
    const bool reply = *answer_ ? ahead : !ahead;
    std::cerr << (reply ? "-> Yes" : "-> No") << (*answer_ ? " (--yes: go ahead" : " (--no")
              << (holding && *answer_ ? std::string("; ") + (italian ? holding->ahead_italian
                                                                     : holding->ahead_english)
                                      : std::string())
              << ")\n";
    return reply;
  }
  if (!is_terminal(STDIN_FILENO)) {
    std::cerr << (ahead ? "-> No" : "-> Yes")
              << " (no terminal to ask: not going ahead; use --yes or --no)\n";
    return !ahead;
  }
  for (;;) {
    std::cerr << "[y/n] " << std::flush;
    std::string reply;
    if (!std::getline(std::cin, reply)) return !ahead;
    if (reply == "y" || reply == "Y" || reply == "yes" || reply == "Yes") return true;
    if (reply == "n" || reply == "N" || reply == "no" || reply == "No") return false;
    if (reply.empty()) return !ahead;
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
  // Asked once: a progress bar moves at every percent of every bar.
  static const bool terminal = is_terminal(STDERR_FILENO);
  if (terminal) {
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
