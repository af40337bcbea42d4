#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "port/status.h"

namespace quorva {

constexpr const char* kParbaseFile = "temp/Parbase.dat";

enum class ProgramLanguage { kNone, kCobol, kEasytrieve };
enum class ProgramKind { kBatch = 0, kRoutine = 1, kMatch = 2 };

/// The check boxes, in the order their tags are written.
enum class Switch { kConstants, kThru, kBuffering, kStream, kComments, kJcl, kRollback, kCommit };
constexpr int kSwitchCount = 8;

/// The count drop-downs ("0" to "9"); kParameters is the run-time parameter cards (SYSIN).
enum class Count {
  kFilein,
  kFileout,
  kReport,
  kSelect,
  kFetch,
  kUpdate,
  kInsert,
  kDelete,
  kParameters
};
constexpr int kCountCount = 9;
constexpr int kMaxCount = 9;
/// A drop-down with no entry chosen (its tag was missing).
constexpr int kNoCount = -1;

/// Tag of a switch or a count in temp/Parbase.dat.
const char* switch_tag(Switch s);
const char* count_tag(Count c);
/// Stored language and kind words: "cobol"/"easytrieve", "batch"/"routine"/"match".
const char* language_word(ProgramLanguage language);
const char* kind_word(ProgramKind kind);

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
  /// stored name keeps its value; longer than 8 characters is refused; else stored trimmed.
  bool set_name(const std::string& text);
  /// Chooses the language and applies the language rules.
  void set_language(ProgramLanguage language);
  /// False, with a message, for a kind the language rules disable.
  bool set_kind(ProgramKind kind);
  /// False, with a message, for THRU under Easytrieve.
  bool set_switch(Switch s, bool on);
  /// False, with a message, outside 0-9 or for the report count under Cobol.
  bool set_count(Count c, int value);
  void set_description(const std::string& box_text) { description_ = box_text; }

  /// The wrapped description lines, as they will be stored.
  std::vector<std::string> description_lines() const;

  /// OK: checks name and language (message and false, nothing written) then writes
  /// temp/Parbase.dat.
  bool confirm() const;
  /// Writes the state to `destination`, replacing the file whole.
  Status write(const std::string& destination) const;

 private:
  void apply_language_rules();
  void load();

  std::string name_;
  ProgramLanguage language_ = ProgramLanguage::kNone;
  std::optional<ProgramKind> kind_;
  std::array<bool, kSwitchCount> switches_{};
  std::array<int, kCountCount> counts_{};
  std::string description_;
};

}  // namespace quorva
