#include "support/recording_ui.h"

namespace quorva::test {

RecordingUi::RecordingUi() : scope_(*this) {}
RecordingUi::~RecordingUi() = default;

bool RecordingUi::ask_yes_no(const std::string& title, const std::string& text) {
  questions.push_back(title + "|" + text);
  if (answers_.empty()) return false;
  bool yes = answers_.front();
  answers_.pop_front();
  return yes;
}

void RecordingUi::set_progress(const std::string& bar, int position, int range) {
  progress.push_back(bar + ":" + std::to_string(position) + "/" + std::to_string(range));
}

}  // namespace quorva::test
