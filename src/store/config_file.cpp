#include "store/config_file.h"

#include <algorithm>
#include <climits>

#include "tagfile/folder_lock.h"
#include "tagfile/tag_file.h"

namespace quorva {

std::optional<std::string> read_config(const char* key) {
  return Leggi_tag(kConfigFile, false, key);
}

bool config_switch(const char* key) {
  return Leggi_tag_int(kConfigFile, false, key) > 0;
}

int read_break_point(const BreakPoint& point) {
  const int value = Leggi_tag_int(kConfigFile, false, point.key);
  return value < 1 ? point.fallback : value;
}

std::string template_name() {
  return read_config(kAlternativeTemplateKey).value_or(kDefaultTemplateName);
}

std::string template_path() {
  const std::string name = template_name();
  if (name.find_first_of("/\\") != std::string::npos) return name;
  return kTemplateFolder + name;
}

UseCounterRaise::UseCounterRaise() {
  // Held across the read and the write, so two generations never count as one.
  if (!lock_.held()) {
    status_ = lock_.status();
    return;
  }
  const int before = Leggi_tag_int(kConfigFile, false, kUseCounterKey);
  uses_ = std::clamp(before, 0, INT_MAX - 1) + 1;
  TagEdit edit = config_edit();
  edit.set(kUseCounterKey, std::to_string(uses_));
  bool changed = false;
  status_ = edit.edited_text(true, text_, changed);
  if (status_) writer_ = std::thread([this] { written_ = disk().replace(kConfigFile, text_); });
  forget_held_read(kConfigFile);
}

UseCounterRaise::~UseCounterRaise() {
  if (writer_.joinable()) writer_.join();
}

Result<int> UseCounterRaise::result() {
  if (writer_.joinable()) {
    writer_.join();
    if (!written_.ok()) status_ = report_write_failure(true, kConfigFile, written_.error);
  }
  if (!status_) return status_;
  return uses_;
}

int read_use_counter() {
  return std::max(0, Leggi_tag_int(kConfigFile, false, kUseCounterKey));
}

std::optional<WindowPosition> read_window_position(const std::string& name) {
  // Leggi_tag_int gives -1 for a missing tag, so one test covers missing and negative.
  const int x = Leggi_tag_int(kConfigFile, false, name + "_posX");
  const int y = Leggi_tag_int(kConfigFile, false, name + "_posY");
  if (x < 0 || y < 0) return std::nullopt;
  return WindowPosition{x, y};
}

Status save_window_position(const std::string& name, WindowPosition position) {
  TagEdit edit = config_edit();
  edit.set(name + "_posX", std::to_string(position.x));
  edit.set(name + "_posY", std::to_string(position.y));
  return edit.apply(false);
}

}  // namespace quorva
