#include "panels/program_files.h"

#include <string_view>

#include "panels/base_parameters.h"
#include "port/user_interface.h"
#include "store/detfiles_file.h"
#include "store/key2value_file.h"
#include "store/parbase_file.h"
#include "tagfile/folder_lock.h"
#include "tagfile/messages.h"
#include "tagfile/tag_file.h"

namespace quorva {
namespace {

constexpr const char* kDeleted[] = {
    kParbaseFile,          kDetfilesFile,         kKey2ValueFile,        "temp/FtpQuorva.ini",
    "temp/customused.dat", kCustomK2VFile,        "temp/col_select.dat", "temp/col_fetch.dat",
    "temp/col_update.dat", "temp/col_insert.dat", "temp/col_delete.dat"};

constexpr const char* kDefaults[] = {"Parbase.dat",    "Detfiles.dat",  "key2value.dat",
                                     "customused.dat", "customK2V.dat", "Flags.dat",
                                     "col_select.dat", "col_fetch.dat", "col_update.dat",
                                     "col_insert.dat", "col_delete.dat"};

const std::string kTemp = "temp/";
const std::string kDefault = "temp/default/";
constexpr const char* kParbase = "Parbase.dat";
/// The name a default program without one is saved under.
constexpr const char* kUnnamedProgram = "PROGNAME";

bool has_default(std::string_view file) {
  for (const char* name : kDefaults)
    if (file == kTemp + name) return Esiste_file(kDefault + name);
  return false;
}

}  // namespace

std::span<const char* const> new_program_deleted_files() {
  return kDeleted;
}

std::span<const char* const> default_program_files() {
  return kDefaults;
}

Result<bool> new_program() {
  const bool yes = ui().ask_yes_no(
      bilingual("Erasing Fields", "Azzeramento Campi"),
      bilingual("Warning!!! Every informations about the current program, about Db2 accesses, "
                "about Files and Custom Code\n will be LOST..\n\nDo you want to continue ?",
                "Attenzione!!! Tutte le informazioni sul programma corrente, sugli accessi Db2, "
                "sui File e sul Codice Custom\n andranno PERSE..\n\nVuoi continuare ?"));
  if (!yes) return false;
  FolderLock lock;
  if (!lock.held()) return lock.status();
  // A file with a default is replaced by it in one write rather than deleted first, so a
  // copy that fails leaves the file as it was.
  Status done;
  for (const char* file : kDeleted)
    if (!has_default(file)) done &= remove_if_present(file, true);
  for (const char* name : kDefaults)
    if (Esiste_file(kDefault + name)) done &= Copia_file(true, kDefault + name, kTemp + name);
  if (!done) return done;
  return true;
}

Result<bool> save_as_default(const BaseParameters& panel) {
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
  if (!lock.held()) return lock.status();
  // Each default is replaced in one write by its new text; one whose program file is
  // missing goes.
  Status done;
  ProgramRecord record = panel.record();
  if (record.name.empty()) record.name = kUnnamedProgram;
  done &= write_parbase(record, kDefault + kParbase);
  for (const char* name : kDefaults) {
    if (name == std::string_view(kParbase)) continue;
    const std::string source = kTemp + name;
    done &= Esiste_file(source) ? Copia_file(true, source, kDefault + name)
                                : remove_if_present(kDefault + name, true);
  }
  if (!done) return done;
  Mostra_popup(
      "DEFAULT CONFIGURATION saved!\nThis is Your new configuration for every further "
      "programs...",
      "Impostazioni di DEFAULT memorizzate correttamente!\nQuando creerai il prossimo "
      "programma otterrai questa configurazione...");
  return true;
}

}  // namespace quorva
