#include "cli/rows.h"

#include <string>

#include "tagfile/messages.h"

namespace quorva::cli {

Count access_count(AccessKind kind) {
  return static_cast<Count>(static_cast<int>(Count::kSelect) + static_cast<int>(kind));
}

bool row_in_range(int row, int count, const RowFamily& family) {
  if (row >= 1 && row <= count) return true;
  const std::string n = std::to_string(row);
  const std::string total = std::to_string(count);
  const std::string tag = count_tag(family.count);
  const std::string where_en = " of the program (" + tag +
                               " in temp/Parbase.dat; change it with quorva program set " + tag +
                               "=N).";
  const std::string where_it = " del programma (" + tag +
                               " in temp/Parbase.dat; modificalo con quorva program set " + tag +
                               "=N).";
  const std::string noun_en = family.access ? "Access " : "Row ";
  const std::string noun_it = family.access ? "L'accesso " : "La riga ";
  if (row < 1) {
    const std::string plural_en = family.access ? "accesses" : "rows";
    const std::string plural_it =
        family.access ? "gli accessi sono numerati" : "le righe sono numerate";
    Mostra_popup(noun_en + n + " does not exist: " + plural_en + " are numbered from 1 to the " +
                     total + " " + family.english + where_en,
                 noun_it + n + " non esiste: " + plural_it + " da 1 ai " + total + " " +
                     family.italian + where_it);
  } else {
    Mostra_popup(noun_en + n + " is beyond the " + total + " " + family.english + where_en,
                 noun_it + n + " supera i " + total + " " + family.italian + where_it);
  }
  return false;
}

}  // namespace quorva::cli
