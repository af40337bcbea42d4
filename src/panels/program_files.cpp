#include "panels/program_files.h"

#include "panels/base_parameters.h"
#include "tagfile/messages.h"
#include "tagfile/folder_lock.h"
#include "tagfile/tag_file.h"
#include "port/user_interface.h"

namespace quorva {
namespace {

constexpr const char* kDeleted[] = {
    "temp/Parbase.dat",    "temp/Detfiles.dat",   "temp/key2value.dat",  "temp/FtpQuorva.ini",
    "temp/customused.dat", "temp/customK2V.dat",  "temp/col_select.dat", "temp/col_fetch.dat",
    "temp/col_update.dat", "temp/col_insert.dat", "temp/col_delete.dat"};

constexpr const char* kDefaults[] = {"Parbase.dat",    "Detfiles.dat",  "key2value.dat",
                                     "customused.dat", "customK2V.dat", "Flags.dat",
                                     "col_select.dat", "col_fetch.dat", "col_update.dat",
                                     "col_insert.dat", "col_delete.dat"};

const std::string kTemp = "temp/";
const std::string kDefault = "temp/default/";

}  // namespace

std::span<const char* const> new_program_deleted_files() {
  return kDeleted;
}

std::span<const char* const> default_program_files() {
  return kDefaults;
}

bool new_program() {
  const bool yes = ui().ask_yes_no(
      bilingual("Erasing Fields", "Azzeramento Campi"),
      bilingual("Warning!!! Every informations about the current program, about Db2 accesses, "
                "about Files and Custom Code\n will be LOST..\n\nDo you want to continue ?",
                "Attenzione!!! Tutte le informazioni sul programma corrente, sugli accessi Db2, "
                "sui File e sul Codice Custom\n andranno PERSE..\n\nVuoi continuare ?"));
  if (!yes) return false;
  FolderLock lock;
  if (!lock.held()) return false;
  Status done;
  for (const char* file : kDeleted) done &= remove_if_present(file, true);
  for (const char* name : kDefaults)
    if (Esiste_file(kDefault + name)) done &= Copia_file(true, kDefault + name, kTemp + name);
  return done.ok();
}

bool save_as_default(const BaseParameters& panel) {
  const bool yes = ui().ask_yes_no(
      bilingual("Save as DEFAULT", "Salva come DEFAULT"),
      bilingual("Warning!!! Every informations about the current program, about Db2 accesses, "
                "about Files and Custom Code\n will be considered as STARTING CONFIGURATION for "
                "your further programs..\n\nDo you want to continue ?",
                "Attenzione!!! Tutte le informazioni sul programma corrente, sugli accessi Db2, "
                "sui File e sul Codice Custom\n saranno considerate come CONFIGURAZIONE INIZIALE "
                "per i tuoi prossimi programmi..\n\nVuoi continuare ?"));
  if (!yes) return false;
  FolderLock lock;
  if (!lock.held()) return false;
  Status done;
  for (const char* name : kDefaults) {
    const std::string source = kTemp + name;
    if (std::string(name) != "Parbase.dat" && !Esiste_file(source))
      done &= remove_if_present(kDefault + name, true);
  }
  const std::string parbase = kDefault + "Parbase.dat";
  done &= panel.write(parbase);
  if (done && !Leggi_tag(parbase, false, "nomeprogr"))
    done &= Modifica_tag(parbase, true, true, "nomeprogr", "PROGNAME");
  for (const char* name : kDefaults) {
    const std::string source = kTemp + name;
    if (std::string(name) != "Parbase.dat" && Esiste_file(source))
      done &= Copia_file(true, source, kDefault + name);
  }
  if (!done) return false;
  Mostra_popup(
      "DEFAULT CONFIGURATION saved!\nThis is Your new configuration for every further "
      "programs...",
      "Impostazioni di DEFAULT memorizzate correttamente!\nQuando creerai il prossimo "
      "programma otterrai questa configurazione...");
  return true;
}

}  // namespace quorva
