#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "port/status.h"
#include "store/parbase_file.h"

namespace quorva {

/// The Base Parameters panel (WindowParBase): the state of its controls and every rule.
class BaseParameters {
 public:
  /// Opens the panel on temp/Parbase.dat; a missing file gives Cobol, Comments, Batch.
  static BaseParameters open();

  const std::string& name() const { return name_; }
  ProgramLanguage language() const { return language_; }
  std::optional<ProgramKind> kind() const { return kind_; }
  bool switch_on(Switch s) const { return switches_[static_cast<int>(s)]; }
  /// 0-9, or kNoCount for an empty drop-down.
  int count(Count c) const { return counts_[static_cast<int>(c)]; }
  const std::string& description() const { return description_; }

  /// Which controls the language rules leave enabled.
  bool routine_enabled() const { return language_ != ProgramLanguage::kEasytrieve; }
  bool match_enabled() const { return language_ != ProgramLanguage::kCobol; }
  bool thru_enabled() const { return language_ != ProgramLanguage::kEasytrieve; }
  bool report_enabled() const { return language_ != ProgramLanguage::kCobol; }

  /// The name check: a leading digit is refused with the first-character message and the
  /// stored name keeps its value; longer than 8 characters is refused; else the text is
  /// trimmed and upper-cased, as a TSO panel takes it, and must be a member name (1 to 8 of
  /// A-Z, 0-9, @ # $): anything else is refused, keeping the stored name. A line break or a
  /// NUL empties the name. False, with the message shown, when refused.
  bool set_name(const std::string& text);
  /// Chooses the language and applies the language rules.
  void set_language(ProgramLanguage language);
  /// False, with a message, for a kind the language rules disable.
  bool set_kind(ProgramKind kind);
  /// False, with a message, for THRU under Easytrieve.
  bool set_switch(Switch s, bool on);
  /// False, with a message, outside 0-9 or for the report count under Cobol.
  bool set_count(Count c, int value);
  /// The description box's text, lines separated by "\n" (or "\r\n"). A NUL or a carriage
  /// return that ends no line empties it: false, with the message shown. A word longer
  /// than a wrapped line is reported, as the wrap will cut it.
  bool set_description(const std::string& box_text);

  /// The wrapped description lines, as they will be stored.
  std::vector<std::string> description_lines() const;

  /// OK: checks name and language (message and failure, nothing written) then writes
  /// temp/Parbase.dat.
  Status confirm() const;
  /// Writes the state to `destination`, replacing the file whole in one write.
  Status write(const std::string& destination) const;
  /// What the panel writes.
  ProgramRecord record() const;

 private:
  void apply_language_rules();
  void load(const ProgramRecord& record);

  std::string name_;
  ProgramLanguage language_ = ProgramLanguage::kNone;
  std::optional<ProgramKind> kind_;
  std::array<bool, kSwitchCount> switches_{};
  std::array<int, kCountCount> counts_{};
  std::string description_;
};

}  // namespace quorva
