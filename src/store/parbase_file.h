#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "port/status.h"

namespace quorva {

// The owner of temp/Parbase.dat, the base parameters of the program being defined: its
// path, its tags and their order, and what a missing or odd value means, for every reader.

constexpr const char* kParbaseFile = "temp/Parbase.dat";

/// The language; kNone when no language was chosen (the `linguaggio` line is left out).
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

/// Written when the description yields no line at all.
constexpr const char* kEmptyDescription = "DESCRIZIONE PROGRAMMA....";
/// The last description line number a reader looks for.
constexpr int kLastDescriptionLine = 999;

/// Tag of a switch or a count.
const char* switch_tag(Switch s);
const char* count_tag(Count c);
/// Stored language and kind words: "cobol"/"easytrieve", "batch"/"routine"/"match".
const char* language_word(ProgramLanguage language);
const char* kind_word(ProgramKind kind);
/// The language a stored word means: "cobol" Cobol, a missing word kNone (not chosen), any
/// other word Easytrieve (the drop-down's second entry).
ProgramLanguage language_of(const std::optional<std::string>& word);

/// What temp/Parbase.dat holds.
struct ProgramRecord {
  std::string name;  ///< a member name, or empty
  ProgramLanguage language = ProgramLanguage::kNone;
  std::optional<ProgramKind> kind;
  std::array<bool, kSwitchCount> switches{};
  /// 0-9 (a number outside is brought to the nearest bound), kNoCount when missing; a
  /// missing parameter-card count is 0 (files older than the cards have none).
  std::array<int, kCountCount> counts{};
  std::vector<std::string> description;  ///< descprogr0, descprogr1, ... in order

  bool switch_on(Switch s) const { return switches[static_cast<int>(s)]; }
  int count(Count c) const { return counts[static_cast<int>(c)]; }
};

/// Reads the file once; nullopt when it is missing or cannot be read. A name that is not a
/// member name reads as empty, and is always reported (the file was edited by hand);
/// `popup` also reports each missing count.
std::optional<ProgramRecord> read_parbase(bool popup, const std::string& file = kParbaseFile);

/// The file's text, tags in their fixed order; an empty description is written as
/// kEmptyDescription.
std::string parbase_text(const ProgramRecord& record);

/// Replaces `file` with the record's text in one write. Refused, writing nothing, when a
/// value holds a line break or a NUL or the name is not a member name.
Status write_parbase(const ProgramRecord& record, const std::string& file = kParbaseFile);

/// The language recorded in temp/Parbase.dat; kNone when not chosen or no file.
ProgramLanguage read_program_language();
/// A count recorded in temp/Parbase.dat; kNoCount when missing or no file.
int read_program_count(Count c);

}  // namespace quorva
