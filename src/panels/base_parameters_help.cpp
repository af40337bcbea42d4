#include "panels/base_parameters_help.h"

#include "panels/base_parameters.h"
#include "port/user_interface.h"
#include "store/config_file.h"
#include "store/key2value_file.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

struct HelpText {
  const char* english;
  const char* italian;
};

// In the order of BaseField.
constexpr HelpText kHelp[] = {
    {"Specify the Program Name. Use at maximum 8 characters.",
     "Specificare il Nome del Programma. Usare al massimo 8 caratteri."},
    {"Specify a Language Type between Cobol 2  or Easytrieve.",
     "Specificare un Linguaggio fra Cobol 2  o Easytrieve."},
    {"Specify the program description that will appear inside the source.",
     "Specificare la descrizione del programma che apparira' all'interno del sorgente."},
    {"This Flag enable JCL rows already configured for your Program.",
     "Questo Flag abilita le righe di JCL gia' configurate per il tuo Programma."},
    {"Batch Programs can be executed manually or using a schedule system.",
     "I Programmi Batch possono essere eseguiti manualmente o tramite uno schedulatore."},
    {"Routine are programs called from other programs, with a specific task.They have an "
     "exchange data area.",
     "Le Routine sono programmi richiamati da altri programmi, con un compito specifico.Hanno "
     "un'area di scambio dati."},
    {"A Match already have 2 input files included, that must be sorted by the matching KEY. The "
     "first also requires unique key!",
     "Un Match include gia' 2 file di input, che devono essere ordinati per la CHIAVE di "
     "abbinamento. Il primo richiede anche la chiave univoca!"},
    {"Comments are 'commented rows' that help in program reading and separate the program "
     "areas.",
     "I Commenti sono 'righe commentate' che aiutano la lettura del programma e ne separano le "
     "aree."},
    {"Rollback db2 erases every Update of the database from the last db2 COMMIT or the program "
     "beginning.",
     "Il Rollback db2 annulla ogni aggiornamento del database dall'ultimo COMMIT db2 o "
     "dall'inizio del programma."},
    {"The Streaming process is a quick data access, because all the data are preallocated inside "
     "the Working Storage at the beginning.",
     "Lo Streaming e' un accesso veloce ai dati, perche' tutti i dati sono preallocati nella "
     "Working Storage all'inizio."},
    {"The Buffering process is a method to archive data from 'input' and to writes it when "
     "specific event happens.",
     "Il Buffering e' un metodo per archiviare i dati di 'input' e scriverli quando avvengono "
     "eventi specifici."},
    {"Insert the THRU at every PERFORM (Old School).",
     "Inserisce il THRU ad ogni PERFORM (Vecchia Scuola)."},
    {"Constants set a list of variables locked in Value by an final logic control.",
     "Le Costanti impostano una lista di variabili bloccate nel Valore da un controllo logico "
     "finale."},
    {"Select the required Db2 Delete accesses then proceed for DETAILS.",
     "Selezionare gli accessi Db2 Delete richiesti e procedere con i DETTAGLI."},
    {"Select the required Db2 Fetch accesses then proceed for DETAILS.",
     "Selezionare gli accessi Db2 Fetch richiesti e procedere con i DETTAGLI."},
    {"Select the required Input Files then proceed for DETAILS.",
     "Selezionare i File di Input richiesti e procedere con i DETTAGLI."},
    {"Select the required Output Files then proceed for DETAILS where you can also specify Excel "
     "files.",
     "Selezionare i File di Output richiesti e procedere con i DETTAGLI dove si possono anche "
     "indicare i file Excel."},
    {"Select the required Db2 Insert accesses then proceed for DETAILS.",
     "Selezionare gli accessi Db2 Insert richiesti e procedere con i DETTAGLI."},
    {"Select the required Report Files then proceed for DETAILS.",
     "Selezionare i Report richiesti e procedere con i DETTAGLI."},
    {"Select the required Db2 Select accesses then proceed for DETAILS.",
     "Selezionare gli accessi Db2 Select richiesti e procedere con i DETTAGLI."},
    {"Select the required Db2 Update accesses then proceed for DETAILS.",
     "Selezionare gli accessi Db2 Update richiesti e procedere con i DETTAGLI."},
    {"Db2 Commit validate all database changes and releases the resources.The problem is that "
     "normal programs can't be executed again!!!",
     "Il Commit Db2 convalida tutte le modifiche al database e rilascia le risorse.Il problema e' "
     "che i normali programmi non possono essere rieseguiti!!!"},
    {"Select the number of run-time parameter cards the program reads.",
     "Selezionare il numero di schede parametro lette dal programma in esecuzione."},
};

std::string count_text(int value) {
  return std::to_string(value < 0 ? 0 : value);
}

// Slots are written two-digit by the collection managers; a bare number is accepted too.
int used_slots(const std::string& file, const std::string& prefix, int last) {
  int used = 0;
  for (int n = 1; n <= last; ++n) {
    std::string padded = (n < 10 ? "0" : "") + std::to_string(n);
    if (Leggi_tag(file, false, prefix + padded) ||
        Leggi_tag(file, false, prefix + std::to_string(n)))
      ++used;
  }
  return used;
}

}  // namespace

std::string field_help(BaseField field) {
  const HelpText& help = kHelp[static_cast<int>(field)];
  return bilingual(help.english, help.italian);
}

std::string parameters_label() {
  return "PARAMETERS (SYSIN)  :";
}

std::string quick_help_summary(const BaseParameters& panel) {
  const bool english = Lingua_inglese();
  auto pick = [english](const char* en, const char* it) { return std::string(english ? en : it); };
  std::string text = pick(
      "To obtain a quick help refer to the button below ...\nNow follow the "
      "current User choices : \n",
      "Per l'help veloce riferirsi all'area attiva nella parte bassa del "
      "pannello...\nResoconto AREE definite dall'utente: \n");
  switch (panel.language()) {
    case ProgramLanguage::kCobol:
      text += pick("Language:\tCobol", "Linguaggio:\tCobol");
      break;
    case ProgramLanguage::kEasytrieve:
      text += pick("Language:\tEasytrieve", "Linguaggio:\tEasytrieve");
      break;
    case ProgramLanguage::kNone:
      text += pick("Language:\tTo select...", "Linguaggio:\tDa selezionare...");
      break;
  }
  text += "\t ->" + (panel.name().empty() ? std::string("...") : panel.name()) + "<-\n";
  text += "\n";
  if (panel.switch_on(Switch::kConstants)) text += pick("[CONSTANTS]", "[COSTANTI]");
  if (panel.switch_on(Switch::kComments)) text += pick("[COMMENTS]", "[COMMENTI]");
  if (panel.switch_on(Switch::kThru)) text += "[THRU]";
  if (panel.switch_on(Switch::kBuffering)) text += "[BUFFERING]";
  if (panel.switch_on(Switch::kStream)) text += "[STREAM]";
  if (panel.switch_on(Switch::kJcl)) text += "[JCL]";
  text += "\n";
  const ProgramKind kind = panel.kind().value_or(ProgramKind::kBatch);
  text += kind == ProgramKind::kMatch     ? "Tipo Prg:\tMatch\n"
          : kind == ProgramKind::kRoutine ? "Tipo Prg:\tRoutine\n"
                                          : "Tipo Prg:\tBatch\n";
  text += "Tot. Filein:\t" + count_text(panel.count(Count::kFilein)) + " ";
  text += "Tot. Fileout:\t" + count_text(panel.count(Count::kFileout)) + " ";
  text += "Tot. Report:\t" + count_text(panel.count(Count::kReport)) + " \n";
  text += "Tot. Select:\t" + count_text(panel.count(Count::kSelect)) + " ";
  text += "Tot. Fetch:\t" + count_text(panel.count(Count::kFetch)) + " ";
  text += "Tot. Update:\t" + count_text(panel.count(Count::kUpdate)) + " ";
  text += "Tot. Insert:\t" + count_text(panel.count(Count::kInsert)) + " ";
  text += "Tot. Delete:\t" + count_text(panel.count(Count::kDelete)) + " ";
  if (panel.switch_on(Switch::kRollback)) text += "[ROLLBACK]";
  if (panel.switch_on(Switch::kCommit)) text += "[COMMIT]";
  text += "\nTot. Sysin:\t" + count_text(panel.count(Count::kParameters)) + " ";
  return text;
}

ProgramInformation program_information() {
  ProgramInformation info;
  info.custom_codes = used_slots("temp/customused.dat", "Custom_code_", 30);
  info.key2value_collections = used_slots(kCustomK2VFile, "Key2Value_", kCollectionSlots);
  info.flag_collections = used_slots("temp/Flags.dat", "FlagsColl_", 25);
  const std::string path = template_path();
  info.template_name = Leggi_tag(path, false, "quormem").value_or("");
  info.template_lines = Leggi_tag(path, false, "numlines").value_or("");
  return info;
}

void open_main_pseudo_source() {
  Mostra_popup(
      bilingual("You are opening the Main Pseudo Source Code!!!\n",
                "Stai aprendo il Sorgente Principale di Pseudo-Codice!!!\n") +
      bilingual("(This file should be modified only by the programmer in charge)\n",
                "(Questo file dovrebbe essere modificato solo dal programmatore incaricato)\n") +
      bilingual("If you change something it's suggested to update the Tag: <quormem> with a new "
                "value..\n\n\n",
                "Se modifichi qualcosa e' consigliato aggiornare il Tag: <quormem> con un nuovo "
                "valore..\n\n\n") +
      bilingual("Please, also refer to the - Advanced User - section to understand how to modify "
                "the file.\n",
                "Fare riferimento anche alla sezione - Utente Avanzato - per capire come "
                "modificare il file.\n"));
  ui().open_file(template_path());
}

}  // namespace quorva
