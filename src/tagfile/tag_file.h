#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "port/status.h"

namespace quorva {

// The tag-file store: plain text files of "tag=value" lines, opened by name at every call
// and closed before it returns. Names are relative to the working folder. `popup` asks
// the operation to show its failures to the person as well as logging them.
//
// Every write replaces the file whole (a temporary file renamed over it), under the
// working folder's lock, and says whether it was done: a reader sees the old file or the
// new one, never a part, and a failed write leaves the old file as it was.

/// The value of the first line beginning with tag + "="; nullopt when the file cannot be
/// opened, the tag is missing or its value is empty.
std::optional<std::string> Leggi_tag(const std::string& file, bool popup, const std::string& tag);
/// Leggi_tag on the text of a file already read; `file` names it in the messages.
std::optional<std::string> Leggi_tag_in(std::string_view text, const std::string& file, bool popup,
                                        const std::string& tag);
/// As Leggi_tag, with the Italian messages only.
std::optional<std::string> Leggi_tag_ita(const std::string& file, bool popup,
                                         const std::string& tag);
/// "on"/"ON" 1, "off"/"OFF" 0, else the leading decimal digits (none: 0); -1 when missing.
int Leggi_tag_int(const std::string& file, bool popup, const std::string& tag);
/// A found value as Leggi_tag_int reads it.
int tag_int_value(const std::string& value);
/// True only for "on" and "ON".
bool Leggi_tag_onoff(const std::string& file, bool popup, const std::string& tag);

/// Appends tag + "=" + value + "\n", creating the file; never looks for an existing line.
Status Appendi_tag(const std::string& file, bool popup, const std::string& tag,
                   const std::string& value);
Status Appendi_tag_int(const std::string& file, bool popup, const std::string& tag, int value);

/// Rewrites the file with every line of the tag set to `value`, dropping blank lines; with
/// `add` a missing tag is appended. A file that cannot be opened is never created.
Status Modifica_tag(const std::string& file, bool popup, bool add, const std::string& tag,
                    const std::string& value);
/// Rewrites the file without the tag's lines; untouched when the tag is absent.
Status Cancella_tag(const std::string& file, bool popup, const std::string& tag);

/// Creates the file empty, or empties an existing one.
Status Crea_file(const std::string& file, bool popup);
/// Byte-for-byte copy, after the checks of the store in their fixed order.
Status Copia_file(bool popup, const std::string& source, const std::string& destination);
/// Removes the file; fails (and says so with `popup`) when it could not be removed.
Status Cancella_file(const std::string& file, bool popup);
/// Removes the file when it is there; a missing file is not a failure.
Status remove_if_present(const std::string& file, bool popup);
/// True when the file can be opened for reading.
bool Esiste_file(const std::string& file);

/// The whole text of a file; nullopt when it is missing or cannot be read.
std::optional<std::string> read_whole_file(const std::string& file);

/// While one lives on a thread, each file these functions read there is read from the disk
/// once and kept; a write by them drops what was kept of the file. A command that asks the
/// configuration and its records many times then reads each once.
class HeldReads {
 public:
  HeldReads();
  ~HeldReads();
  HeldReads(const HeldReads&) = delete;
  HeldReads& operator=(const HeldReads&) = delete;
};
/// Drops what a HeldReads kept of `file`, for a file written by other means.
void forget_held_read(const std::string& file);
/// Replaces the file's whole text in one write, for writers that build a file of many tags
/// or a generated program: the old file stays as it was unless the new one is complete.
/// A failure shows "I cannot open the output file ..." with `popup` and is logged with the
/// file name only (never the text, which may hold the password).
Status Scrivi_file(const std::string& file, bool popup, std::string_view text);
/// A failed replacement of `file` as Scrivi_file reports it: popup, error log, message.
Status report_write_failure(bool popup, const std::string& file, const std::string& reason);

/// Appends the line tag + "=" + value + "\n" to a text being built.
void append_tag_line(std::string& text, std::string_view tag, std::string_view value);
/// The store refuses a tag or a value that holds a carriage return, a line feed or a NUL:
/// written to a file it would end the line and start a tag of its own. False, with the
/// refusal shown (with `popup`) and logged, for such a text.
bool valid_tag_value(bool popup, const std::string& tag, const std::string& value);
/// True when the text holds a CR, LF or NUL.
bool has_line_break(std::string_view text);
/// The refusal of such a value, naming the field.
std::string line_break_message(const std::string& field);

/// Removes leading and trailing spaces; a string of spaces only is left as it is.
void Trim_spazi(std::string& text);
/// Deletes every space.
void Togli_spazi(std::string& text);

/// Puts `value` in place of every `tag` in a fixed-column line, trading the length
/// difference against blanks later on the line so the following columns stay in place.
/// False when a longer value could not be absorbed and the line grew.
bool Sostituisci_in_colonna(std::string& line, std::string_view tag, std::string_view value);
/// The same, putting `in_literal` instead where the tag stands inside an apostrophe
/// literal (an odd number of apostrophes before it on the line).
bool Sostituisci_in_colonna(std::string& line, std::string_view tag, std::string_view value,
                            std::string_view in_literal);

/// What one column-preserving replacement did.
struct ColumnReplacement {
  std::size_t count = 0;      ///< occurrences replaced
  std::size_t first_end = 0;  ///< where the first value put ends (with `count` > 0)
  bool absorbed = true;       ///< false when a longer value made the line grow
};
/// `Sostituisci_in_colonna` for a tag known to occur first at `first`.
ColumnReplacement replace_in_columns(std::string& line, std::size_t first, std::string_view tag,
                                     std::string_view value, std::string_view in_literal);

}  // namespace quorva
