#include "engine/template_loader.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "tagfile/disk.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kMarker = "[THE CODE BEGINS HERE]";

void check_client_version(const std::string& template_name, std::string_view text) {
  std::optional<std::string> client = Leggi_tag_in(text, template_name, true, "client");
  if (!client) return;
  std::string value = *client;
  Trim_spazi(value);
  if (value == kClientVersion) return;
  Scrivi_log(bilingual("There is Client Version difference... It's suggested to update Quorva "
                       "Client or your Quormem.txt file. ",
                       "E' stata riscontrata una differenza di versione Client... Si consiglia di "
                       "aggiornare il Quorva o il file Quormem.txt. "),
             kNoNumber, LogKind::kWarning);
  Scrivi_log_dettaglio(
      bilingual("The current Client Version is:", "La versione corrente del Client e':"),
      std::string("==>") + kClientVersion + "<==", kNoNumber, kNoNumber, LogKind::kWarning);
  Scrivi_log_dettaglio(
      bilingual("The required Client Version to use all QuorMEM tags is (tag:'client'):",
                "La versione del client richiesto dal file QuorMEM (tag:'client'):"),
      "==>" + *client + "<==", kNoNumber, kNoNumber, LogKind::kWarning);
}

// Reads lines as the loader does; returns the code lines after the marker.
LoadedTemplate split_code(LoadedTemplate lines, int declared,
                          const std::function<void(int)>& step) {
  if (declared > 0) lines.reserve(static_cast<std::size_t>(declared));
  const std::string_view all = lines.text();
  bool begun = false;
  for (std::size_t start = 0; start < all.size();) {
    std::size_t end = all.find('\n', start);
    if (end == std::string_view::npos) end = all.size();
    std::string_view line = all.substr(start, end - start);
    start = end + 1;
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (!begun) {
      std::string trimmed(line);
      Trim_spazi(trimmed);
      begun = trimmed == kMarker;
      continue;
    }
    if (step && static_cast<int>(lines.size()) <= declared)
      step(static_cast<int>(lines.size()) + 1);
    lines.add(line);
  }
  return lines;
}

void warn_size(const std::string& template_name, int read, int declared) {
  Mostra_popup(
      "Warning! The size of the Source Pseudo Code File is different from the size declared "
      "inside it,\nprobably due to some modifications from the user inside the file:" +
          template_name +
          "\nIn this time you will not obtain a perfect alignment inside the progress bar..."
          "\nReaded Lines:" +
          std::to_string(read) + "\nDeclared Lines:" + std::to_string(declared) +
          "\n\nB e  C a r e f u l !!! Before to proceed with the program, Quorva will update "
          "this number for next times.\nThis operation could require some second more.",
      "Attenzione!, la dimensione del sorgente di pseudocodice e' differente da quella "
      "dichiarata nello stesso,\nprobabilmente a causa di qualche modifica da parte "
      "dell'utente dentro al file:" +
          template_name +
          "\nCio' comportera' la mancata precisione delle barre di progresso..."
          "\nRighe Preallocate:" +
          std::to_string(read) + "\nRighe Dichiarate:" + std::to_string(declared) +
          "\n\nA t t e n z i o n e ! Prima di procedere il programma aggiornera il tag "
          "'numlines' per un corretto utilizzo successivo.\nL'operazione potrebbe richiedere "
          "qualche secondo in piu'.");
}

}  // namespace

LoadedTemplate::LoadedTemplate(std::string text) {
  auto owner = std::make_shared<const std::string>(std::move(text));
  text_ = *owner;
  bytes_ = std::shared_ptr<const char[]>(owner, owner->data());
}

void LoadedTemplate::reserve(std::size_t count) {
  lines_.reserve(count);
  prefault(lines_.data(), count * sizeof(std::string_view));
}

namespace {

// The count stands in the header: looked for in the template's first bytes, so a long
// template is not read whole once more just for it. Only a found value is taken from there;
// anything else goes the whole file's way, with its messages.
constexpr std::size_t kHeadBytes = 4096;

std::optional<int> declared_in_head(const std::string& template_name) {
  if (template_name.empty()) return std::nullopt;
  const FileRead head = disk().read_head(template_name, kHeadBytes);
  if (head.status != FileRead::kRead) return std::nullopt;
  std::string_view text = head.text;
  // A file longer than the head: its lines cut at the head's end are not looked at.
  if (text.size() == kHeadBytes) text = text.substr(0, text.rfind('\n') + 1);
  const std::optional<std::string> value = Leggi_tag_in(text, template_name, false, "numlines");
  if (!value) return std::nullopt;
  return tag_int_value(*value);
}

}  // namespace

int read_declared_count(const std::string& template_name) {
  if (const std::optional<int> count = declared_in_head(template_name)) return *count;
  return Leggi_tag_int(template_name, true, "numlines");
}

bool preallocate(const std::string& template_name, int declared, LoadedTemplate& lines,
                 const std::function<void(int)>& step, std::string* version) {
  lines = LoadedTemplate();
  // Read once: the header tags and the code come from the same text.
  FileBytes bytes;
  if (!template_name.empty()) bytes = disk().read_bytes(template_name);
  if (bytes.status != FileRead::kRead) {
    // As the header read reports a template that is not there.
    (void)Leggi_tag(template_name, true, "client");
    Mostra_popup("WARNING, It's impossible to open the file:" + template_name,
                 "ATTENZIONE, impossibile aprire il file:" + template_name);
    return false;
  }
  const std::string_view text = bytes.text();
  check_client_version(template_name, text);
  if (version) *version = Leggi_tag_in(text, template_name, false, "quormem").value_or("");
  lines = split_code(LoadedTemplate(std::move(bytes.data), bytes.size), declared, step);
  const int read = static_cast<int>(lines.size());
  if (read == declared) return true;
  warn_size(template_name, read, declared);
  // The count is corrected for the next run (a failure is shown); this run goes on with the
  // lines it read.
  (void)Modifica_tag(template_name, true, false, "numlines", std::to_string(read));
  return true;
}

LoadedTemplate code_lines_of(const std::string& text) {
  return split_code(LoadedTemplate(text), 0, nullptr);
}

}  // namespace quorva
