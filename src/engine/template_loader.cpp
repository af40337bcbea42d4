#include "engine/template_loader.h"

#include <algorithm>
#include <optional>
#include <string_view>

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
LoadedTemplate split_code(std::string text, int declared, const std::function<void(int)>& step) {
  LoadedTemplate lines(std::move(text));
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

int read_declared_count(const std::string& template_name) {
  return Leggi_tag_int(template_name, true, "numlines");
}

bool preallocate(const std::string& template_name, int declared, LoadedTemplate& lines,
                 const std::function<void(int)>& step, std::string* version) {
  lines = LoadedTemplate();
  // Read once: the header tags and the code come from the same text.
  std::optional<std::string> text = read_whole_file(template_name);
  if (!text) {
    // As the header read reports a template that is not there.
    (void)Leggi_tag(template_name, true, "client");
    Mostra_popup("WARNING, It's impossible to open the file:" + template_name,
                 "ATTENZIONE, impossibile aprire il file:" + template_name);
    return false;
  }
  check_client_version(template_name, *text);
  if (version) *version = Leggi_tag_in(*text, template_name, false, "quormem").value_or("");
  lines = split_code(std::move(*text), declared, step);
  const int read = static_cast<int>(lines.size());
  if (read == declared) return true;
  warn_size(template_name, read, declared);
  // The count is corrected for the next run (a failure is shown); this run goes on with the
  // lines it read.
  (void)Modifica_tag(template_name, true, false, "numlines", std::to_string(read));
  return true;
}

LoadedTemplate code_lines_of(const std::string& text) {
  return split_code(text, 0, nullptr);
}

}  // namespace quorva
