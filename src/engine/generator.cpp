#include "engine/generator.h"

#include <fstream>
#include <optional>

#include "engine/conversion_list.h"
#include "engine/custom_code.h"
#include "engine/db2_expansion.h"
#include "engine/flag_table.h"
#include "engine/level_titles.h"
#include "engine/line_writer.h"
#include "engine/output_pass.h"
#include "engine/program_definition.h"
#include "tagfile/log.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"
#include "port/user_interface.h"

namespace quorva {
namespace {

constexpr int kCoreSteps = 4;

// Advances a bar only when its percentage moves, so long templates do not flood the port.
class Bar {
 public:
  Bar(const char* name, int range) : name_(name), range_(range > 0 ? range : 1) {}
  void set(int position) {
    const long percent = static_cast<long>(position) * 100 / range_;
    if (percent == last_) return;
    last_ = percent;
    ui().set_progress(name_, position > range_ ? range_ : position, range_);
  }

 private:
  const char* name_;
  int range_;
  long last_ = -1;
};

int break_point(const char* tag, int fallback) {
  const int value = Leggi_tag_int(kConfigFile, false, tag);
  return value < 0 ? fallback : value;
}

bool open_failed(const std::string& name) {
  Mostra_popup("It's impossible to open the file:" + name +
                   "\nThe folder could not exists or the unit could be protected, ... verify "
                   "and retry!",
               "Impossibile Aprire il file:" + name +
                   "\nLa cartella potrebbe non esistere o l'unita' potrebbe essere protetta, o "
                   "altro... verificare e riprovare!");
  Scrivi_log("Impossibile Aprire il file", kNoNumber, LogKind::kError);
  Scrivi_log_dettaglio("nomefile:", name, kNoNumber, kNoNumber, LogKind::kError);
  return false;
}

}  // namespace

std::string Generator::output_name(bool popup) {
  std::optional<std::string> folder = Leggi_tag(kUserFile, popup, "sourcedirectory");
  std::optional<std::string> name = Leggi_tag(kParbaseFile, popup, "nomeprogr");
  if (!folder || !name) return "";
  return *folder + *name + ".txt";
}

void Generator::open_panel() {
  Crea_log(LogKind::kWarning);
  template_name_ = choose_template();
  declared_ = read_declared_count(template_name_);
  for (const char* bar : {kBarPreallocation, kBarConversions, kBarOutput})
    ui().set_progress(bar, 0, 1);
  std::string shown = template_name_;
  Sostituisci_in_colonna(shown, "Resource/", " ");
  const std::string program = Leggi_tag(kParbaseFile, false, "nomeprogr").value_or("");
  ui().set_status(bilingual("Code Generator Module Ready - CPU 100%. RAM modules Activated.\r\n"
                            "Waiting START Process for :",
                            "Modulo Generatore di Codice Pronto - CPU 100%. Moduli RAM "
                            "Attivati.\r\nIn attesa di AVVIO per :") +
                  program + " \r\n" +
                  bilingual("Pseudo Source Active:", "Pseudo Sorgente Attivo:") + shown);
}

GenerationResult Generator::go() {
  GenerationResult result;
  messages_ = 0;
  if (template_name_.empty()) open_panel();
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
  // The licence check always passes (free software); the use counter still rises.
  const int uses_before = std::max(0, Leggi_tag_int(kConfigFile, false, "QVjoined"));
  const int uses = uses_before + 1;
  if (!Modifica_tag(kConfigFile, true, true, "QVjoined", std::to_string(uses))) return result;

  ui().set_status(bilingual("Pseudo-Code Allocating in Progress...\r\n \r\n \r\n",
                            "Preallocazione Pseudo-Codice in corso...\r\n \r\n \r\n"));
  LoadedTemplate lines;
  Bar first(kBarPreallocation, declared_);
  if (!preallocate(template_name_, declared_, lines, [&](int n) { first.set(n); })) return result;

  ui().set_status(bilingual("Key 2 Value Setting in Progress...\r\n \r\n \r\n",
                            "Impostazione Chiave a Valore in corso...\r\n \r\n \r\n"));
  Bar second(kBarConversions, kCoreSteps);
  const int cobol_break = break_point("COBOL_BREAK_POINT", kCobolBreakPoint);
  const int easytrieve_break = break_point("EASYTRIEVE_BREAK_POINT", kEasytrieveBreakPoint);
  const ProgramDefinition def = load_program_definition();
  const FlagTable flags = FlagTable::build(def, messages_);
  second.set(1);
  ConversionList conversions;
  HeaderValues header{Leggi_tag(template_name_, false, "quormem").value_or(""), header_date()};
  build_conversion_list(def, header, conversions);
  second.set(2);
  Db2Expansion db2;
  second.set(3);
  const CustomCode custom = CustomCode::load();
  second.set(4);

  ui().set_status(bilingual("Encoding Engine Enabled\r\n \r\n \r\n",
                            "Motore di Codifica Attivato\r\n \r\n \r\n"));
  std::ofstream out(result.output_name, std::ios::binary | std::ios::trunc);
  if (!out) {
    open_failed(result.output_name);
    return result;
  }
  LineWriter writer(def, conversions, cobol_break, easytrieve_break);
  OutputPass pass{def, flags, custom, db2, writer};
  Bar third(kBarOutput, static_cast<int>(lines.size()));
  write_program(lines, pass, [&](int n) { third.set(n); });
  if (lines.empty()) third.set(1);
  out << writer.text();
  out.close();
  if (!out) {
    open_failed(result.output_name);
    return result;
  }

  result.status = GenerationResult::kDone;
  result.lines_written = writer.lines_written();
  result.first_lines = writer.first_lines();
  result.rank = level_title(uses);
  ui().set_status(
      bilingual("Quorva JOB complete!!!\r\n", "Lavoro Quorva completato!!!\r\n") + def.name +
      bilingual(" code has been generated in... ", " codice generato in... ") +
      std::to_string(result.lines_written) +
      bilingual(" lines.\r\nNow proceed with PREVIEW, FTP TRANSFER or QUIT !\r\n",
                " righe.\r\nOra procedi con ANTEPRIMA, TRASFERIMENTO FTP o ESCI !\r\n") +
      bilingual("Your RANK is :", "Il tuo LIVELLO e' :") + result.rank);
  if (std::string(level_title(uses_before)) != result.rank)
    Mostra_popup(
        "Congratulations!!! You advanced in Rank! Now you are:\n\n\n\t\t\t\t\t" + result.rank,
        "Complimenti!!! Il tuo Livello e' avanzato! Ora sei :\n\n\n\t\t\t\t\t" + result.rank);
  return result;
}

bool Generator::preview() {
  const std::string name = output_name(false);
  if (name.empty() || !Esiste_file(name)) {
    Mostra_popup("Cannot find the following file:\n" + name,
                 "Non trovo il seguente file :\n" + name);
    return false;
  }
  ui().open_file(name);
  return true;
}

void Generator::explore_warnings() {
  ui().open_file(log_file_name(LogKind::kWarning));
}

}  // namespace quorva
