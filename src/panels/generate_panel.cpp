#include "panels/generate_panel.h"

#include <optional>

#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/program_name.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {

std::string GeneratePanel::output_name(bool popup) {
  return read_program_file(popup).value_or("");
}

void GeneratePanel::open() {
  Crea_log(LogKind::kWarning);
  template_name_ = template_path();
  declared_ = read_declared_count(template_name_);
  for (const char* bar : {kBarPreallocation, kBarConversions, kBarOutput})
    ui().set_progress(bar, 0, 1);
  std::string shown = template_name_;
  Sostituisci_in_colonna(shown, "Resource/", " ");
  const std::string program = read_program_name(false).value_or("");
  ui().set_status(bilingual("Code Generator Module Ready - CPU 100%. RAM modules Activated.\r\n"
                            "Waiting START Process for :",
                            "Modulo Generatore di Codice Pronto - CPU 100%. Moduli RAM "
                            "Attivati.\r\nIn attesa di AVVIO per :") +
                  program + " \r\n" +
                  bilingual("Pseudo Source Active:", "Pseudo Sorgente Attivo:") + shown);
}

GenerationResult GeneratePanel::ask(GenerationJob& job) {
  GenerationResult result;
  if (template_name_.empty()) open();
  result.output_name = output_name(true);
  if (result.output_name.empty()) return result;
  if (Esiste_file(result.output_name) &&
      !ui().ask_yes_no(bilingual("Existing File", "File Esistente"),
                       bilingual("Warning! The file you are creating already exists!!\nDo you "
                                 "want to overwrite it ?",
                                 "Attenzione! Il file che si vuole creare esiste gia'!!\nVuoi "
                                 "sovrascriverlo ?"))) {
    result.status = GenerationResult::kDeclined;
    return result;
  }
  job = {template_name_, declared_, result.output_name};
  result.status = GenerationResult::kDone;
  return result;
}

void GeneratePanel::finish(const GenerationResult& result) {
  if (result.status == GenerationResult::kDone && result.promoted)
    Mostra_popup(
        "Congratulations!!! You advanced in Rank! Now you are:\n\n\n\t\t\t\t\t" + result.rank,
        "Complimenti!!! Il tuo Livello e' avanzato! Ora sei :\n\n\n\t\t\t\t\t" + result.rank);
}

GenerationResult GeneratePanel::go() {
  GenerationJob job;
  GenerationResult asked = ask(job);
  if (asked.status != GenerationResult::kDone) return asked;
  GenerationResult result = run(job);
  finish(result);
  return result;
}

bool GeneratePanel::preview() {
  const std::string name = output_name(false);
  if (name.empty() || !Esiste_file(name)) {
    Mostra_popup("Cannot find the following file:\n" + name,
                 "Non trovo il seguente file :\n" + name);
    return false;
  }
  ui().open_file(name);
  return true;
}

void GeneratePanel::explore_warnings() {
  ui().open_file(log_file_name(LogKind::kWarning));
}

std::string GeneratePanel::information_note() {
  return bilingual(
             "WARNING!!! The author doesn't assume any direct or indirect responsibility "
             "about the FTP Transfer of the Program.",
             "ATTENZIONE!!! L'autore non si assume alcuna responsabilita' diretta o "
             "indiretta riguardo il Trasferimento FTP del Programma.") +
         "\n" +
         bilingual(
             "In order to prevent the overwriting of a previous program with the same "
             "name, FTP transmission will try to download the program before to send it.",
             "Per evitare la sovrascrittura di un programma precedente con lo stesso "
             "nome, la trasmissione FTP provera' a scaricare il programma prima di "
             "inviarlo.");
}

bool GeneratePanel::accept_information_note() {
  return ui().ask_yes_no(bilingual("Information Note", "Nota Informativa"),
                         information_note() + "\n\n" +
                             bilingual("I've readed , understood and accepted the Information "
                                       "Note ?",
                                       "Ho letto, capito e accettato la Nota Informativa ?"));
}

}  // namespace quorva
