#pragma once

#include <cstdio>
#include <string>

namespace quorva {

/// The two logs of the working folder, by their historical codes.
enum class LogKind { kWarning = 4, kError = 8 };

/// Marks an absent number in the entry forms.
constexpr long kNoNumber = -99;

/// Empties the log and writes its header (no line break after it).
void Crea_log(LogKind kind);

/// Appends marker + text + number ("%s%ld").
void Scrivi_log(const std::string& text, long number, LogKind kind);

/// Appends marker + text + string, then the numbers that are not -99 ("%d" each).
void Scrivi_log_dettaglio(const std::string& text, const std::string& value, int number1,
                          int number2, LogKind kind);

/// The third use: writes the entry, without a marker, to a file the caller opened, then
/// closes that file. A null file loses the entry, as a log that cannot be opened does.
void Scrivi_log(const std::string& text, long number, std::FILE* caller_file);
void Scrivi_log_dettaglio(const std::string& text, const std::string& value, int number1,
                          int number2, std::FILE* caller_file);

/// Log file names, relative to the working folder.
const char* log_file_name(LogKind kind);

}  // namespace quorva
