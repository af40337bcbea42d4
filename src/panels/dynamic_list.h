#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "port/status.h"

namespace quorva {

/// What a caller gives the Dynamic List (WindowDynamicList): its rows, the column titles,
/// the column widths (in characters) and the window's title.
struct DynamicListSetup {
  std::vector<std::vector<std::string>> rows;
  std::vector<std::string> columns;
  std::vector<int> widths;
  std::string title;
  std::vector<bool> checked;  ///< rows checked at opening; none when empty
};

/// The checklist behind the "Dynamic List" dialog: rows with a check each, sorted by a
/// column on request; OK gives the checked rows back as the caller numbered them.
class DynamicList {
 public:
  /// Refuses, with its set-up message shown, a missing set-up (null), no rows, no columns,
  /// widths that do not match the columns, no window title, or rows with nothing to show.
  static Result<DynamicList> open(const DynamicListSetup* setup);

  std::size_t size() const { return order_.size(); }
  const std::vector<std::string>& columns() const { return setup_.columns; }
  const std::vector<int>& widths() const { return setup_.widths; }
  const std::string& title() const { return setup_.title; }
  /// The cell of shown row `row` (after sorting), column `column`; "" past a short row.
  const std::string& cell(std::size_t row, std::size_t column) const;
  bool checked(std::size_t row) const { return checked_[order_[row]]; }
  void set_checked(std::size_t row, bool on) { checked_[order_[row]] = on; }

  /// "Select All!!!", "Deselect All!!!", "Invert Selection".
  void select_all();
  void deselect_all();
  void invert_selection();
  /// Sorts by `column`, ascending, or descending when it is already sorted ascending by it.
  /// A column that does not exist is the sort's internal error: said, and the order kept.
  bool sort_by(std::size_t column);

  /// The caller's numbers of the checked rows, ascending.
  std::vector<std::size_t> checked_rows() const;

 private:
  DynamicListSetup setup_;
  std::vector<std::size_t> order_;  // shown row -> caller's row
  std::vector<bool> checked_;       // by caller's row
  std::size_t sorted_column_ = static_cast<std::size_t>(-1);
  bool ascending_ = false;
};

}  // namespace quorva
