#include "store/tag_edit.h"

#include <optional>

#include "store/tag_text.h"
#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {

void TagEdit::set(const std::string& tag, const std::string& value) {
  changes_.push_back({tag, value, false});
}

void TagEdit::remove(const std::string& tag) {
  changes_.push_back({tag, "", true});
}

void TagEdit::set_or_remove(const std::string& tag, const std::string& value) {
  if (value.empty())
    remove(tag);
  else
    set(tag, value);
}

Status TagEdit::apply(bool popup) const {
  FolderLock lock;
  if (!lock.held()) return lock.status();
  std::string text;
  bool changed = false;
  if (Status edited = edited_text(popup, text, changed); !edited) return edited;
  if (!changed) return {};
  return Scrivi_file(file_, popup, text);
}

Status TagEdit::edited_text(bool popup, std::string& text, bool& changed) const {
  for (const Change& change : changes_)
    if (!valid_tag_value(popup, change.tag, change.value))
      return Status::failure(line_break_message(change.tag));
  FileRead read = disk().read(file_);
  if (read.status == FileRead::kFailed) {
    const std::string message = bilingual("WARNING, I cannot open the file" + file_,
                                          "ATTENZIONE, impossibile aprire il file" + file_);
    if (popup) Mostra_popup(message);
    return Status::failure(message + (read.error.empty() ? "" : " (" + read.error + ")"));
  }
  const bool missing = read.status == FileRead::kMissing;
  text = std::move(read.text);
  changed = missing;
  for (const Change& change : changes_) {
    if (change.remove) {
      if (std::optional<std::string> left = without_tag(text, change.tag)) {
        text = std::move(*left);
        changed = true;
      }
    } else {
      text = with_tag_set(text, change.tag, change.value, true);
      changed = true;
    }
  }
  return {};
}

}  // namespace quorva
