#include "tagfile/tag_file.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>
#include <vector>

#include "tagfile/disk.h"
#include "tagfile/folder_lock.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"

// Implementation details: files are read whole and split at "\n"; a "\r" right before a
// "\n" is dropped, as text-mode reading did where the files were born. Splitting yields
// one more, empty, piece after a final "\n": the deletion keeps that piece on purpose.
// Every write goes through the disk's whole-file replacement under the folder lock, so a
// read-modify-write by another process can neither interleave nor be seen half done.

namespace quorva {
namespace {

// What a HeldReads keeps, on its thread: each file's text as first read.
thread_local int held_depth = 0;
thread_local std::unordered_map<std::string, std::string> held_texts;

std::optional<std::string> read_file(const std::string& file) {
  if (file.empty()) return std::nullopt;
  if (held_depth > 0)
    if (auto held = held_texts.find(file); held != held_texts.end()) return held->second;
  FileRead read = disk().read(file);
  if (read.status != FileRead::kRead) return std::nullopt;
  if (held_depth > 0) held_texts.emplace(file, read.text);
  return std::move(read.text);
}

// Drops what is kept of a file when the function writing it returns.
class Written {
 public:
  explicit Written(const std::string& file) : file_(file) {}
  ~Written() { forget_held_read(file_); }
  Written(const Written&) = delete;
  Written& operator=(const Written&) = delete;

 private:
  const std::string& file_;
};

// The password is never written to a log, whatever fails.
bool secret_tag(const std::string& tag) {
  return tag == "pswtso";
}

std::vector<std::string> split_lines(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  for (;;) {
    size_t end = text.find('\n', start);
    if (end == std::string::npos) {
      lines.emplace_back(text, start);
      return lines;
    }
    size_t len = end - start;
    if (len > 0 && text[end - 1] == '\r') --len;
    lines.emplace_back(text, start, len);
    start = end + 1;
  }
}

bool begins_with_key(const std::string& line, const std::string& key) {
  return line.compare(0, key.size(), key) == 0;
}

void detail(const char* label, const std::string& value) {
  Scrivi_log_dettaglio(label, value, static_cast<int>(kNoNumber), static_cast<int>(kNoNumber),
                       LogKind::kError);
}

void value_detail(const char* label, const std::string& tag, const std::string& value) {
  if (!secret_tag(tag)) detail(label, value);
}

std::string with_reason(const std::string& message, const std::string& file,
                        const std::string& reason) {
  return message + " " + file + (reason.empty() ? "" : " (" + reason + ")");
}

enum class Language { kByConfiguration, kItalianOnly };

std::string pick(Language language, std::string_view english, std::string_view italian) {
  return language == Language::kItalianOnly ? std::string(italian) : bilingual(english, italian);
}

std::optional<std::string> read_tag_in(std::string_view all, const std::string& file, bool popup,
                                       const std::string& tag, Language language) {
  const std::string key = tag + "=";
  std::optional<std::string> value;
  // Walked in place: a template of many thousand lines is looked up for its header tags.
  for (std::size_t start = 0; start <= all.size();) {
    std::size_t end = all.find('\n', start);
    if (end == std::string_view::npos) end = all.size();
    std::string_view line = all.substr(start, end - start);
    if (end < all.size() && line.ends_with('\r')) line.remove_suffix(1);
    if (line.starts_with(key)) {
      value = std::string(line.substr(key.size()));
      break;
    }
    start = end + 1;
  }
  if (!value || value->empty()) {
    if (popup)
      Mostra_popup(
          pick(language,
               "WARNING,the Tag (" + tag + ") results not found or blank in the defined file :",
               "ATTENZIONE, Tag (" + tag +
                   ") non trovato o risultante a spaces nel file indicato :") +
          file);
    return std::nullopt;
  }
  return value;
}

std::optional<std::string> read_tag(const std::string& file, bool popup, const std::string& tag,
                                    Language language) {
  std::optional<std::string> text = read_file(file);
  if (!text) {
    if (popup)
      Mostra_popup(pick(language, "WARNING , I cannot open the file:",
                        "ATTENZIONE, impossibile aprire il file:") +
                   file);
    return std::nullopt;
  }
  return read_tag_in(*text, file, popup, tag, language);
}

int to_int(const std::string& value) {
  if (value == "on" || value == "ON") return 1;
  if (value == "off" || value == "OFF") return 0;
  errno = 0;
  long n = std::strtol(value.c_str(), nullptr, 10);
  if (n > INT_MAX) return INT_MAX;
  if (n < INT_MIN) return INT_MIN;
  return static_cast<int>(n);
}

Status report_rewrite_failure(bool popup, const std::string& file, const std::string& tag,
                              const char* value_label, const std::string& value,
                              const std::string& reason) {
  if (popup)
    Mostra_popup("I cannot open the output file ...", "Impossibile Aprire file in scrittura ...");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  detail("nomefile:", file);
  if (!tag.empty()) detail("str_tag:", tag);
  if (value_label) value_detail(value_label, tag, value);
  return Status::failure(with_reason(
      bilingual("I cannot write the file", "Impossibile scrivere il file"), file, reason));
}

Status refuse_line_break(bool popup, const std::string& file, const std::string& tag) {
  const std::string message = line_break_message(tag);
  if (popup) Mostra_popup(message);
  Scrivi_log("Valore con a capo o NUL rifiutato", kNoNumber, LogKind::kError);
  detail("nomefile:", file);
  detail("str_tag:", tag);
  return Status::failure(message);
}

Status append_line(const std::string& file, bool popup, const std::string& tag,
                   const std::string& value, std::string_view open_failure_english) {
  const Written written_file(file);
  if (has_line_break(tag) || has_line_break(value)) return refuse_line_break(popup, file, tag);
  FolderLock lock;
  if (!lock.held()) return lock.status();
  FileRead old = file.empty() ? FileRead{FileRead::kFailed, "", ""} : disk().read(file);
  FileWrite written;
  if (old.status != FileRead::kFailed) {
    append_tag_line(old.text, tag, value);
    written = disk().replace(file, old.text);
    if (written.ok()) return {};
  }
  if (popup) Mostra_popup(open_failure_english, "Impossibile Aprire file ...");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  detail("nomefile:", file);
  detail("str_tag:", tag);
  value_detail("stringa da appendere:", tag, value);
  return Status::failure(
      with_reason(bilingual("I cannot write the file", "Impossibile scrivere il file"), file,
                  written.ok() ? old.error : written.error));
}

}  // namespace

std::optional<std::string> Leggi_tag(const std::string& file, bool popup, const std::string& tag) {
  return read_tag(file, popup, tag, Language::kByConfiguration);
}

std::optional<std::string> Leggi_tag_in(std::string_view text, const std::string& file, bool popup,
                                        const std::string& tag) {
  return read_tag_in(text, file, popup, tag, Language::kByConfiguration);
}

std::optional<std::string> Leggi_tag_ita(const std::string& file, bool popup,
                                         const std::string& tag) {
  return read_tag(file, popup, tag, Language::kItalianOnly);
}

int tag_int_value(const std::string& value) {
  return to_int(value);
}

int Leggi_tag_int(const std::string& file, bool popup, const std::string& tag) {
  std::optional<std::string> value = Leggi_tag(file, false, tag);
  if (!value) {
    if (popup)
      Mostra_popup("WARNING, the Tag (" + tag + ") cannot be found inside the file:" + file,
                   "ATTENZIONE, Tag (" + tag + ") non trovato nel file indicato :" + file);
    return -1;
  }
  return to_int(*value);
}

bool Leggi_tag_onoff(const std::string& file, bool popup, const std::string& tag) {
  std::optional<std::string> value = Leggi_tag(file, false, tag);
  if (!value) {
    if (popup)
      Mostra_popup("WARNING, the Tag (" + tag + ") cannot be found inside the file :" + file,
                   "ATTENZIONE, Tag (" + tag + ") non trovato nel file indicato :" + file);
    return false;
  }
  return *value == "on" || *value == "ON";
}

Status Appendi_tag(const std::string& file, bool popup, const std::string& tag,
                   const std::string& value) {
  return append_line(file, popup, tag, value, "I cannot open the file...");
}

Status Appendi_tag_int(const std::string& file, bool popup, const std::string& tag, int value) {
  return append_line(file, popup, tag, std::to_string(value), "I cannot open the File...");
}

Status Modifica_tag(const std::string& file, bool popup, bool add, const std::string& tag,
                    const std::string& value) {
  const Written written_file(file);
  if (has_line_break(tag) || has_line_break(value)) return refuse_line_break(popup, file, tag);
  FolderLock lock;
  if (!lock.held()) return lock.status();
  std::optional<std::string> old_text = read_file(file);
  if (!old_text) {
    const std::string message = bilingual("WARNING, I cannot open the file" + file,
                                          "ATTENZIONE, impossibile aprire il file" + file);
    if (popup) Mostra_popup(message);
    return Status::failure(message);
  }
  const std::string key = tag + "=";
  std::string text;
  text.reserve(old_text->size() + value.size() + key.size() + 1);
  bool found = false;
  for (std::string& line : split_lines(*old_text)) {
    if (begins_with_key(line, key)) {
      line = key + value;
      found = true;
    }
    if (line.empty()) continue;
    text += line;
    text += '\n';
  }
  if (!found && add) text += key + value + "\n";
  FileWrite written = disk().replace(file, text);
  if (!written.ok())
    return report_rewrite_failure(popup, file, tag, "stringa da modificare:", value, written.error);
  return {};
}

Status Cancella_tag(const std::string& file, bool popup, const std::string& tag) {
  const Written written_file(file);
  FolderLock lock;
  if (!lock.held()) return lock.status();
  std::optional<std::string> old_text = read_file(file);
  if (!old_text) {
    const std::string message = bilingual("WARNING , I cannot open the file" + file,
                                          "ATTENZIONE, impossibile aprire il file" + file);
    if (popup) Mostra_popup(message);
    return Status::failure(message);
  }
  const std::string key = tag + "=";
  std::string text;
  text.reserve(old_text->size() + 1);
  bool removed = false;
  for (const std::string& line : split_lines(*old_text)) {
    if (begins_with_key(line, key)) {
      removed = true;
      continue;
    }
    text += line;
    text += '\n';
  }
  if (!removed) return {};
  FileWrite written = disk().replace(file, text);
  if (!written.ok()) return report_rewrite_failure(popup, file, tag, nullptr, "", written.error);
  return {};
}

Status Crea_file(const std::string& file, bool popup) {
  const Written written_file(file);
  FileWrite written;
  if (file.empty()) {
    written.status = FileWrite::kOpenFailed;
  } else {
    FolderLock lock;
    if (!lock.held()) return lock.status();
    written = disk().replace(file, "");
  }
  if (written.ok()) return {};
  const std::string message = bilingual("I failed to create the file:\t" + file,
                                        "Non sono riuscito a Creare il file:\t" + file);
  if (popup) Mostra_popup(message);
  return Status::failure(with_reason(message, "", written.error));
}

Status Copia_file(bool popup, const std::string& source, const std::string& destination) {
  const Written written_file(destination);
  auto fail = [popup](std::string_view english, std::string_view italian, const char* log_text,
                      const std::string& name, int number, const std::string& reason) {
    const std::string message = bilingual(english, italian);
    if (popup) Mostra_popup(message);
    Scrivi_log_dettaglio(log_text, name, number, static_cast<int>(kNoNumber), LogKind::kError);
    return Status::failure(with_reason(message, name, reason));
  };
  if (!Esiste_file(source))
    return fail("The Source file doesn't exists !!", "Il file Sorgente non esiste !!",
                "Impossibile copiare file - Sorgente inesistente - Source:", source, kNoNumber, "");
  if (source == destination)
    return fail("Source and Destination files cannot be the same!!!",
                "Il file Sorgente e Destinazione non possono essere Uguali!!!",
                "Impossibile copiare file - Sorgente == Destinazione - Source:", source, kNoNumber,
                "");
  FileRead in = disk().read(source);
  if (in.status != FileRead::kRead)
    return fail("I cannot open the Source file!!", "Impossibile aprire il file Sorgente!!",
                "Impossibile copiare file - Apertura fallita - Source:", source, 1, in.error);
  FolderLock lock;
  if (!lock.held()) return lock.status();
  FileWrite out = destination.empty() ? FileWrite{FileWrite::kOpenFailed, ""}
                                      : disk().replace(destination, in.text);
  if (out.status == FileWrite::kOpenFailed)
    return fail("I cannot open the Destination file!!", "Impossibile aprire il file Destinazione!!",
                "Impossibile copiare file - Apertura fallita - Dest:", destination, 2, out.error);
  if (out.status == FileWrite::kWriteFailed)
    return fail("Writing error on output File!!", "Errore in Scrittura del File!!!",
                "Impossibile copiare file - Scrittura fallita - Dest:", destination, 2, out.error);
  return {};
}

Status Cancella_file(const std::string& file, bool popup) {
  const Written written_file(file);
  std::string reason;
  if (!file.empty() && disk().remove(file, reason)) return {};
  const std::string message = bilingual("I cannot delete the following file:\t" + file,
                                        "Non sono riuscito a cancellare il file :\t" + file);
  if (popup) Mostra_popup(message);
  return Status::failure(with_reason(message, "", reason));
}

Status remove_if_present(const std::string& file, bool popup) {
  if (disk().read(file).status == FileRead::kMissing) return {};
  return Cancella_file(file, popup);
}

HeldReads::HeldReads() {
  ++held_depth;
}

HeldReads::~HeldReads() {
  if (--held_depth == 0) held_texts.clear();
}

void forget_held_read(const std::string& file) {
  held_texts.erase(file);
}

std::optional<std::string> read_whole_file(const std::string& file) {
  return read_file(file);
}

Status Scrivi_file(const std::string& file, bool popup, std::string_view text) {
  const Written written_file(file);
  FolderLock lock;
  if (!lock.held()) return lock.status();
  FileWrite written =
      file.empty() ? FileWrite{FileWrite::kOpenFailed, ""} : disk().replace(file, text);
  if (!written.ok()) return report_write_failure(popup, file, written.error);
  return {};
}

Status report_write_failure(bool popup, const std::string& file, const std::string& reason) {
  return report_rewrite_failure(popup, file, "", nullptr, "", reason);
}

void append_tag_line(std::string& text, std::string_view tag, std::string_view value) {
  text.append(tag);
  text += '=';
  text.append(value);
  text += '\n';
}

bool has_line_break(std::string_view text) {
  return text.find_first_of(std::string_view("\r\n\0", 3)) != std::string_view::npos;
}

std::string line_break_message(const std::string& field) {
  return bilingual(
      "The value of " + field +
          " contains a line break or a NUL character and will be discharged!!!",
      "Il valore di " + field + " contiene un a capo o un carattere NUL e verra' scartato!!!");
}

bool valid_tag_value(bool popup, const std::string& tag, const std::string& value) {
  if (!has_line_break(tag) && !has_line_break(value)) return true;
  (void)refuse_line_break(popup, "", tag);
  return false;
}

bool Esiste_file(const std::string& file) {
  return !file.empty() && disk().exists(file);
}

void Trim_spazi(std::string& text) {
  size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return;
  size_t last = text.find_last_not_of(' ');
  text = text.substr(first, last - first + 1);
}

void Togli_spazi(std::string& text) {
  std::erase(text, ' ');
}

bool Sostituisci_in_colonna(std::string& line, std::string_view tag, std::string_view value) {
  return Sostituisci_in_colonna(line, tag, value, value);
}

bool Sostituisci_in_colonna(std::string& line, std::string_view tag, std::string_view value,
                            std::string_view in_literal) {
  if (tag.empty() || (tag == value && tag == in_literal)) return true;
  const size_t first = line.find(tag);
  if (first == std::string::npos) return true;
  return replace_in_columns(line, first, tag, value, in_literal).absorbed;
}

namespace {

// The first two blanks in a row at or after `from`: a plain loop, lines being short.
std::size_t find_blank_pair(const std::string& line, std::size_t from) {
  const char* text = line.data();
  for (std::size_t i = from, size = line.size(); i + 1 < size; ++i)
    if (text[i] == ' ' && text[i + 1] == ' ') return i;
  return std::string::npos;
}

}  // namespace

ColumnReplacement replace_in_columns(std::string& line, std::size_t first, std::string_view tag,
                                     std::string_view value, std::string_view in_literal) {
  ColumnReplacement done;
  if (tag.empty() || (tag == value && tag == in_literal)) return done;
  const bool same_view = value.data() == in_literal.data() && value.size() == in_literal.size();
  const bool by_place = !same_view && value != in_literal;
  const size_t start_length = line.size();
  bool unabsorbed = false;
  size_t pos = first;
  size_t counted = 0;  // apostrophes are counted up to here
  bool literal = false;
  while (pos != std::string::npos) {
    if (by_place) {
      for (; counted < pos; ++counted) literal ^= line[counted] == '\'';
    }
    const std::string_view put = literal ? in_literal : value;
    const long d = static_cast<long>(put.size()) - static_cast<long>(tag.size());
    line.replace(pos, tag.size(), put);
    size_t after = pos + put.size();
    if (done.count++ == 0) done.first_end = after;
    if (d < 0) {
      size_t blank = line.find(' ', after);
      if (blank != std::string::npos) line.insert(blank, static_cast<size_t>(-d), ' ');
      // Padding put right after the value is inserted text too: a tag of blanks must not
      // find it again, or an empty value would replace the same blank forever.
      if (blank == after) after += static_cast<size_t>(-d);
    } else if (d > 0) {
      for (long i = 0; i < d; ++i) {
        size_t run = find_blank_pair(line, after);
        if (run == std::string::npos) {
          unabsorbed = true;
          break;
        }
        line.erase(run, 1);
      }
    }
    // The value's own apostrophes open or close no literal of the line.
    counted = after;
    pos = line.find(tag, after);
  }
  done.absorbed = !(unabsorbed && line.size() > start_length);
  return done;
}

}  // namespace quorva
