#include "tagfile/tag_file.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tagfile/log.h"
#include "tagfile/messages.h"

// Implementation details: files are read whole and split at "\n"; a "\r" right before a
// "\n" is dropped, as text-mode reading did where the files were born. Splitting yields
// one more, empty, piece after a final "\n": the deletion keeps that piece on purpose.

namespace quorva {
namespace {

std::optional<std::string> read_file(const std::string& file) {
  if (file.empty()) return std::nullopt;
  std::FILE* f = std::fopen(file.c_str(), "rb");
  if (!f) return std::nullopt;
  std::string text;
  char buffer[8192];
  size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0) text.append(buffer, n);
  std::fclose(f);
  return text;
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

bool write_file(const std::string& file, const std::string& text) {
  std::FILE* f = std::fopen(file.c_str(), "wb");
  if (!f) return false;
  bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size();
  return std::fclose(f) == 0 && ok;
}

void detail(const char* label, const std::string& value) {
  Scrivi_log_dettaglio(label, value, static_cast<int>(kNoNumber), static_cast<int>(kNoNumber),
                       LogKind::kError);
}

enum class Language { kByConfiguration, kItalianOnly };

std::string pick(Language language, std::string_view english, std::string_view italian) {
  return language == Language::kItalianOnly ? std::string(italian) : bilingual(english, italian);
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
  const std::string key = tag + "=";
  std::optional<std::string> value;
  for (const std::string& line : split_lines(*text)) {
    if (begins_with_key(line, key)) {
      value = line.substr(key.size());
      break;
    }
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

int to_int(const std::string& value) {
  if (value == "on" || value == "ON") return 1;
  if (value == "off" || value == "OFF") return 0;
  errno = 0;
  long n = std::strtol(value.c_str(), nullptr, 10);
  if (n > INT_MAX) return INT_MAX;
  if (n < INT_MIN) return INT_MIN;
  return static_cast<int>(n);
}

void append_line(const std::string& file, bool popup, const std::string& tag,
                 const std::string& value, std::string_view open_failure_english) {
  std::FILE* f = file.empty() ? nullptr : std::fopen(file.c_str(), "ab");
  if (f) {
    std::string line = tag + "=" + value + "\n";
    std::fwrite(line.data(), 1, line.size(), f);
    std::fclose(f);
    return;
  }
  if (popup) Mostra_popup(open_failure_english, "Impossibile Aprire file ...");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  detail("nomefile:", file);
  detail("str_tag:", tag);
  detail("stringa da appendere:", value);
}

void report_rewrite_failure(bool popup, const std::string& file, const std::string& tag,
                            const char* value_label, const std::string& value) {
  if (popup)
    Mostra_popup("I cannot open the output file ...", "Impossibile Aprire file in scrittura ...");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  detail("nomefile:", file);
  detail("str_tag:", tag);
  if (value_label) detail(value_label, value);
}

}  // namespace

std::optional<std::string> Leggi_tag(const std::string& file, bool popup, const std::string& tag) {
  return read_tag(file, popup, tag, Language::kByConfiguration);
}

std::optional<std::string> Leggi_tag_ita(const std::string& file, bool popup,
                                         const std::string& tag) {
  return read_tag(file, popup, tag, Language::kItalianOnly);
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

void Appendi_tag(const std::string& file, bool popup, const std::string& tag,
                 const std::string& value) {
  append_line(file, popup, tag, value, "I cannot open the file...");
}

void Appendi_tag_int(const std::string& file, bool popup, const std::string& tag, int value) {
  append_line(file, popup, tag, std::to_string(value), "I cannot open the File...");
}

void Modifica_tag(const std::string& file, bool popup, bool add, const std::string& tag,
                  const std::string& value) {
  std::optional<std::string> old_text = read_file(file);
  if (!old_text) {
    if (popup)
      Mostra_popup("WARNING, I cannot open the file" + file,
                   "ATTENZIONE, impossibile aprire il file" + file);
    return;
  }
  const std::string key = tag + "=";
  std::string text;
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
  if (!write_file(file, text))
    report_rewrite_failure(popup, file, tag, "stringa da modificare:", value);
}

void Cancella_tag(const std::string& file, bool popup, const std::string& tag) {
  std::optional<std::string> old_text = read_file(file);
  if (!old_text) {
    if (popup)
      Mostra_popup("WARNING , I cannot open the file" + file,
                   "ATTENZIONE, impossibile aprire il file" + file);
    return;
  }
  const std::string key = tag + "=";
  std::string text;
  bool removed = false;
  for (const std::string& line : split_lines(*old_text)) {
    if (begins_with_key(line, key)) {
      removed = true;
      continue;
    }
    text += line;
    text += '\n';
  }
  if (removed && !write_file(file, text)) report_rewrite_failure(popup, file, tag, nullptr, "");
}

void Crea_file(const std::string& file, bool popup) {
  std::FILE* f = file.empty() ? nullptr : std::fopen(file.c_str(), "wb");
  if (f) {
    std::fclose(f);
    return;
  }
  if (popup)
    Mostra_popup("I failed to create the file:\t" + file,
                 "Non sono riuscito a Creare il file:\t" + file);
}

void Copia_file(bool popup, const std::string& source, const std::string& destination) {
  auto fail = [popup](std::string_view english, std::string_view italian, const char* log_text,
                      const std::string& name, int number) {
    if (popup) Mostra_popup(english, italian);
    Scrivi_log_dettaglio(log_text, name, number, static_cast<int>(kNoNumber), LogKind::kError);
  };
  if (!Esiste_file(source)) {
    fail("The Source file doesn't exists !!", "Il file Sorgente non esiste !!",
         "Impossibile copiare file - Sorgente inesistente - Source:", source, kNoNumber);
    return;
  }
  if (source == destination) {
    fail("Source and Destination files cannot be the same!!!",
         "Il file Sorgente e Destinazione non possono essere Uguali!!!",
         "Impossibile copiare file - Sorgente == Destinazione - Source:", source, kNoNumber);
    return;
  }
  std::FILE* in = std::fopen(source.c_str(), "rb");
  if (!in) {
    fail("I cannot open the Source file!!", "Impossibile aprire il file Sorgente!!",
         "Impossibile copiare file - Apertura fallita - Source:", source, 1);
    return;
  }
  std::FILE* out = destination.empty() ? nullptr : std::fopen(destination.c_str(), "wb");
  if (!out) {
    std::fclose(in);
    fail("I cannot open the Destination file!!", "Impossibile aprire il file Destinazione!!",
         "Impossibile copiare file - Apertura fallita - Dest:", destination, 2);
    return;
  }
  char buffer[8192];
  size_t n;
  bool ok = true;
  while (ok && (n = std::fread(buffer, 1, sizeof buffer, in)) > 0)
    ok = std::fwrite(buffer, 1, n, out) == n;
  std::fclose(in);
  if (std::fclose(out) != 0) ok = false;
  if (!ok)
    fail("Writing error on output File!!", "Errore in Scrittura del File!!!",
         "Impossibile copiare file - Scrittura fallita - Dest:", destination, 2);
}

int Cancella_file(const std::string& file, bool popup) {
  int result = std::remove(file.c_str());
  if (result != 0 && popup)
    Mostra_popup("I cannot delete the following file:\t" + file,
                 "Non sono riuscito a cancellare il file :\t" + file);
  return result;
}

bool Esiste_file(const std::string& file) {
  if (file.empty()) return false;
  std::FILE* f = std::fopen(file.c_str(), "rb");
  if (!f) return false;
  std::fclose(f);
  return true;
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
  if (tag.empty() || tag == value) return true;
  const size_t start_length = line.size();
  const long d = static_cast<long>(value.size()) - static_cast<long>(tag.size());
  bool unabsorbed = false;
  size_t pos = line.find(tag);
  while (pos != std::string::npos) {
    line.replace(pos, tag.size(), value);
    size_t after = pos + value.size();
    if (d < 0) {
      size_t blank = line.find(' ', after);
      if (blank != std::string::npos) line.insert(blank, static_cast<size_t>(-d), ' ');
      // Padding put right after the value is inserted text too: a tag of blanks must not
      // find it again, or an empty value would replace the same blank forever.
      if (blank == after) after += static_cast<size_t>(-d);
    } else if (d > 0) {
      for (long i = 0; i < d; ++i) {
        size_t run = line.find("  ", after);
        if (run == std::string::npos) {
          unabsorbed = true;
          break;
        }
        line.erase(run, 1);
      }
    }
    pos = line.find(tag, after);
  }
  return !(unabsorbed && line.size() > start_length);
}

}  // namespace quorva
