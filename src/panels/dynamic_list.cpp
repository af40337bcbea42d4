#include "panels/dynamic_list.h"

#include <algorithm>
#include <numeric>

#include "tagfile/messages.h"

namespace quorva {
namespace {

Status refused(std::string_view english, std::string_view italian) {
  Mostra_popup(english, italian);
  return Status::failure(bilingual(english, italian));
}

}  // namespace

Result<DynamicList> DynamicList::open(const DynamicListSetup* setup) {
  // The set-up messages are the list's own, in one language whatever the user's.
  if (!setup)
    return refused("DynList - Oggetto non inizializzato", "DynList - Oggetto non inizializzato");
  if (setup->rows.empty())
    return refused("DynList - Vettore oggetti vuoto!", "DynList - Vettore oggetti vuoto!");
  if (setup->columns.empty())
    return refused("DynList - Dati Colonne mancanti", "DynList - Dati Colonne mancanti");
  if (setup->widths.size() != setup->columns.size())
    return refused("DynList - Dati dimensione colonne mancanti",
                   "DynList - Dati dimensione colonne mancanti");
  if (setup->title.empty())
    return refused("DynList - Dati finestra mancanti", "DynList - Dati finestra mancanti");
  const bool useful = std::any_of(setup->rows.begin(), setup->rows.end(), [](const auto& row) {
    return std::any_of(row.begin(), row.end(), [](const std::string& c) { return !c.empty(); });
  });
  if (!useful)
    return refused("There is no useful data in list!", "Non ci sono dati utili nella lista!");
  DynamicList list;
  list.setup_ = *setup;
  list.order_.resize(setup->rows.size());
  std::iota(list.order_.begin(), list.order_.end(), 0);
  list.checked_.assign(setup->rows.size(), false);
  for (std::size_t i = 0; i < setup->checked.size() && i < list.checked_.size(); ++i)
    list.checked_[i] = setup->checked[i];
  return list;
}

const std::string& DynamicList::cell(std::size_t row, std::size_t column) const {
  static const std::string kNone;
  const std::vector<std::string>& cells = setup_.rows[order_[row]];
  return column < cells.size() ? cells[column] : kNone;
}

void DynamicList::select_all() {
  std::fill(checked_.begin(), checked_.end(), true);
}

void DynamicList::deselect_all() {
  std::fill(checked_.begin(), checked_.end(), false);
}

void DynamicList::invert_selection() {
  checked_.flip();
}

bool DynamicList::sort_by(std::size_t column) {
  if (column >= setup_.columns.size()) {
    Mostra_popup("Internal Error in Sort Algorythm!", "Errore interno algoritmo di Sort!");
    return false;
  }
  const bool ascending = !(sorted_column_ == column && ascending_);
  auto text = [this, column](std::size_t row) -> const std::string& {
    const std::vector<std::string>& cells = setup_.rows[row];
    static const std::string kNone;
    return column < cells.size() ? cells[column] : kNone;
  };
  // Stable, so rows with equal cells keep the caller's order among themselves.
  std::sort(order_.begin(), order_.end());
  std::stable_sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? text(a) < text(b) : text(b) < text(a);
  });
  sorted_column_ = column;
  ascending_ = ascending;
  return true;
}

std::vector<std::size_t> DynamicList::checked_rows() const {
  std::vector<std::size_t> rows;
  for (std::size_t i = 0; i < checked_.size(); ++i)
    if (checked_[i]) rows.push_back(i);
  return rows;
}

}  // namespace quorva
