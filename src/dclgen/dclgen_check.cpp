#include "dclgen/dclgen_check.h"

#include "tagfile/messages.h"

namespace quorva {

DclgenCheck check_columns(const std::vector<DclgenColumn>& columns) {
  DclgenCheck check;
  std::string lines;
  for (const DclgenColumn& column : columns) {
    std::string found;
    auto note = [&](DclgenProblem kind, std::string_view english, std::string_view italian) {
      ++check.by_kind[static_cast<int>(kind)];
      ++check.total;
      found += bilingual(english, italian);
    };
    if (column.name.empty()) {
      note(DclgenProblem::kName, "- Column Name Invalid!\n", "- Nome Colonna Invalido!\n");
    }
    bool dated = column.type_code == db2type::kDate || column.type_code == db2type::kTime ||
                 column.type_code == db2type::kTimestamp;
    if (column.length_text.empty() && !dated) {
      note(DclgenProblem::kDefinition, "- Db2 Column definition not found\n",
           "- Definizione colonna Db2 non trovata\n");
    }
    if (column.type_code == db2type::kUnknown) {
      note(DclgenProblem::kType, "- Db2 Column Type not found\n",
           "- Tipo Colonna Db2 non trovata\n");
    }
    if (column.cobol_picture.empty()) {
      note(DclgenProblem::kPicture,
           "- Cobol Picture not found (probably Cobol var. name is different from Column "
           "name..)\n",
           "- Picture Cobol associata non trovata (probabilmente nome var. Cobol e' differente "
           "dal nome Colonna..)\n");
    }
    if (!found.empty()) lines += "'" + column.name + "'\n" + found;
  }
  if (check.total == 0) return check;
  std::string total = std::to_string(check.total);
  check.status = bilingual("Tot.<" + total + "> problems found parsing DCLgen!!!",
                           "Tot.<" + total + "> problemi trovati decifrando la DCLgen!!!");
  check.detail =
      bilingual(
          "\nDCLgen do not respect the standard generating process so you could find some "
          "fields not correctly valorized.\nAnyway it has been accepted...\n\nError Detail with "
          "the associated column:\n",
          "\nLa DCLgen non rispetta il metodo di generazione standard e potreste trovare dei "
          "campi non correttamente valorizzati.\nNonostante questo e' stata accettata...\n\n"
          "Dettaglio errori con relativa colonna associata:\n") +
      lines;
  return check;
}

std::string forced_null_status() {
  return bilingual("Some Null values has been Forced!", "Qualche colonna e' stata forzata Null!");
}

bool toggle_forced_null(std::vector<DclgenColumn>& columns, int index, bool null_checked) {
  if (index < 1 || index > static_cast<int>(columns.size())) return false;
  columns[index - 1].not_null = null_checked ? 0 : 1;
  return true;
}

}  // namespace quorva
