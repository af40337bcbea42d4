#pragma once

#include <optional>
#include <vector>

#include "panels/dynamic_list.h"
#include "ui/frame_dialog.h"

class QTableWidget;

namespace quorva::gui {

/// The "Dynamic List" checklist (WindowDynamicList) over the core's DynamicList.
class DynamicListDialog : public FrameDialog {
  Q_OBJECT
 public:
  DynamicListDialog(DynamicList list, QWidget* parent);

  /// Opens the list for `setup` and returns the caller's numbers of the checked rows on OK;
  /// nullopt on Cancel or when the set-up was refused (said by the list).
  static std::optional<std::vector<std::size_t>> pick(const DynamicListSetup& setup,
                                                      QWidget* parent);

  const DynamicList& list() const { return list_; }
  QTableWidget* table() const { return table_; }

 private:
  void fill();
  void take_checks();

  DynamicList list_;
  QTableWidget* table_;
};

}  // namespace quorva::gui
