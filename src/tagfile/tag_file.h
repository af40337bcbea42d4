#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorva {

// The tag-file store: plain text files of "tag=value" lines, opened by name at every call
// and closed before it returns. Names are relative to the working folder. `popup` asks
// the operation to show its failures to the person as well as logging them.

/// The value of the first line beginning with tag + "="; nullopt when the file cannot be
/// opened, the tag is missing or its value is empty.
std::optional<std::string> Leggi_tag(const std::string& file, bool popup, const std::string& tag);
/// As Leggi_tag, with the Italian messages only.
std::optional<std::string> Leggi_tag_ita(const std::string& file, bool popup,
                                         const std::string& tag);
/// "on"/"ON" 1, "off"/"OFF" 0, else the leading decimal digits (none: 0); -1 when missing.
int Leggi_tag_int(const std::string& file, bool popup, const std::string& tag);
/// True only for "on" and "ON".
bool Leggi_tag_onoff(const std::string& file, bool popup, const std::string& tag);

/// Appends tag + "=" + value + "\n", creating the file; never looks for an existing line.
void Appendi_tag(const std::string& file, bool popup, const std::string& tag,
                 const std::string& value);
void Appendi_tag_int(const std::string& file, bool popup, const std::string& tag, int value);

/// Rewrites the file with every line of the tag set to `value`, dropping blank lines; with
/// `add` a missing tag is appended. A file that cannot be opened is never created.
void Modifica_tag(const std::string& file, bool popup, bool add, const std::string& tag,
                  const std::string& value);
/// Rewrites the file without the tag's lines; untouched when the tag is absent.
void Cancella_tag(const std::string& file, bool popup, const std::string& tag);

/// Creates the file empty, or empties an existing one.
void Crea_file(const std::string& file, bool popup);
/// Byte-for-byte copy, after the checks of the store in their fixed order.
void Copia_file(bool popup, const std::string& source, const std::string& destination);
/// Removes the file; 0 on success, as the platform's removal.
int Cancella_file(const std::string& file, bool popup);
/// True when the file can be opened for reading.
bool Esiste_file(const std::string& file);

/// Removes leading and trailing spaces; a string of spaces only is left as it is.
void Trim_spazi(std::string& text);
/// Deletes every space.
void Togli_spazi(std::string& text);

/// Puts `value` in place of every `tag` in a fixed-column line, trading the length
/// difference against blanks later on the line so the following columns stay in place.
/// False when a longer value could not be absorbed and the line grew.
bool Sostituisci_in_colonna(std::string& line, std::string_view tag, std::string_view value);

}  // namespace quorva
