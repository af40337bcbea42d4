#include "store/dclgen_members.h"

#include "store/key2value_file.h"
#include "store/program_name.h"
#include "tagfile/messages.h"

namespace quorva {

std::vector<std::string> include_members() {
  const TagText keys = read_key2value_file();
  std::vector<std::string> members;
  for (const char letter : {'S', 'F', 'U', 'I', 'D'}) {
    for (int row = 1; row <= 9; ++row) {
      std::optional<std::string> member =
          keys.value("INCLU-" + std::to_string(row) + std::string(1, letter));
      if (!member || !is_member_name(*member)) continue;
      bool seen = false;
      for (const std::string& known : members) seen |= known == *member;
      if (!seen) members.push_back(*member);
    }
  }
  return members;
}

std::string missing_dclgen_message(const std::string& path) {
  return bilingual("Cannot find the following DCLGEN file: \n",
                   "Non trovo il seguente scarico della DCLGEN : \n") +
         path +
         bilingual("\n\nThe Db2 Field Selection cannot proceed without the previous file!",
                   "\n\nLa Selezione dei Campi Db2 non puo' procedere senza il file precedente!") +
         bilingual(
             "\n\nIf your FTP tranfer didn't works, check out the following :"
             "\n - Wrong FTP configuration. Check Library inserted and DCLGen name."
             "\n - Wrong IP Addresses ,User or Password (check the FTP panel and update your "
             "password)."
             "\n - Opened and editing file on Mainframe. Check out that no one is editing your "
             "DCLGEN."
             "\n - Wrong VOLUME about the cylinders of the source Library of Dclgens. Try to "
             "change you IP address asking to the systemists."
             "\n - Use Advanced HELP.",
             "\n\nSe il trasferimento FTP non funziona, le possibili cause potrebbero essere:"
             "\n - Configurazione FTP errata. Controllare la Libreria inserita e il nome della "
             "DCLGen."
             "\n - Indirizzo IP, Utente o Password errati (controllare il pannello FTP e "
             "aggiornare la password)."
             "\n - File aperto in modifica sul Mainframe. Controllare che nessuno stia "
             "modificando la DCLGEN."
             "\n - VOLUME errato per i cilindri della Libreria sorgente delle Dclgen. Provare a "
             "cambiare indirizzo IP chiedendo ai sistemisti."
             "\n - Usare l'HELP Avanzato.");
}

}  // namespace quorva
