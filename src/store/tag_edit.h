#pragma once

#include <string>
#include <vector>

#include "port/status.h"

namespace quorva {

/// Changes to one tag file gathered by a panel's OK and made in one read-modify-write: the
/// file is read once under the working folder's lock, every change is made in memory in
/// the order given (a set as Modifica_tag with its add flag, a removal as Cancella_tag),
/// and the file is replaced once. Another process's change made meanwhile is never lost,
/// and a failure leaves the file as it was.
class TagEdit {
 public:
  explicit TagEdit(std::string file) : file_(std::move(file)) {}

  const std::string& file() const { return file_; }

  /// Sets every line of the tag to `value`, adding the tag when missing.
  void set(const std::string& tag, const std::string& value);
  /// Removes every line of the tag.
  void remove(const std::string& tag);
  /// A filled field sets its tag, a blank one removes it.
  void set_or_remove(const std::string& tag, const std::string& value);

  bool empty() const { return changes_.empty(); }

  /// Makes the changes. A missing file is created (also with no change), a file that
  /// exists but cannot be read is a failure; a value with a line break or a NUL refuses
  /// the whole edit before anything is written. `popup` shows the failure as well.
  Status apply(bool popup) const;

  /// The first half of apply(): the file read and changed in memory under the lock the
  /// caller holds. `text` is the new content; `changed` false when nothing needs writing.
  Status edited_text(bool popup, std::string& text, bool& changed) const;

 private:
  struct Change {
    std::string tag;
    std::string value;
    bool remove = false;
  };
  std::string file_;
  std::vector<Change> changes_;
};

}  // namespace quorva
