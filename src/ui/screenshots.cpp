#include "ui/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QTabWidget>
#include <algorithm>
#include <memory>

#include "panels/base_parameters.h"
#include "panels/column_selection.h"
#include "panels/dynamic_list.h"
#include "panels/host_names.h"
#include "store/key2value_file.h"
#include "store/user_file.h"
#include "ui/advanced_options_dialog.h"
#include "ui/base_parameters_dialog.h"
#include "ui/collection_dialogs.h"
#include "ui/column_selection_dialog.h"
#include "ui/db2_details_dialog.h"
#include "ui/dynamic_list_dialog.h"
#include "ui/error_popup.h"
#include "ui/file_details_dialog.h"
#include "ui/generate_dialog.h"
#include "ui/main_window.h"
#include "ui/preview_dialog.h"
#include "ui/qt_text.h"
#include "ui/threaded_interface.h"
#include "ui/user_data_dialog.h"

namespace quorva::gui {
namespace {

// Shows the widget, lets it lay out and paint, and saves it; the widget is not closed
// through its buttons, so no position is written.
bool save(QWidget* widget, const QDir& folder, const QString& name, QStringList& written) {
  widget->show();
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
  const QString file = folder.filePath(name + ".png");
  if (!widget->grab().save(file)) return false;
  written << file;
  widget->hide();
  return true;
}

// The DCLGEN members of the source folder, as a list to pick from.
DynamicListSetup member_list() {
  DynamicListSetup setup{{}, {"Member", "Bytes"}, {12, 8}, "Dynamic List", {}};
  const QDir source(to_qt(read_source_directory(false).value_or(".")));
  for (const QFileInfo& file : source.entryInfoList({"*.DCL"}, QDir::Files, QDir::Name)) {
    setup.rows.push_back({file.completeBaseName().toStdString(), std::to_string(file.size())});
    setup.checked.push_back(setup.rows.size() == 1);
  }
  if (setup.rows.empty()) setup.rows = {{"CUSTOMER", "1200"}, {"ORDERS", "900"}};
  return setup;
}

// A manager of each kind with one example collection in use, made in memory only: the
// window is never confirmed, so nothing reaches the disk.
void collection_pictures(QWidget* parent, const QDir& target, QStringList& written) {
  const struct {
    CollectionKind kind;
    const char* name;
    CollectionContent content;
    const char* picture;
  } examples[] = {
      {CollectionKind::kKeyToValue,
       "BRANCHES",
       {"Branch codes", {}, {{"<BRANCH>", "MILANO", true}, {"<AREA>", "NORD", true}}, ""},
       "collections_k2v"},
      {CollectionKind::kFlags,
       "EXTRA",
       {"Extra checks", {{"CZZ", 3}, {"JZZ", 1}}, {}, ""},
       "collections_flags"},
      {CollectionKind::kSnippets,
       "START",
       {"",
        {},
        {},
        "[COBOL CUSTOM INITIALIZE]\n           DISPLAY 'CUSTMOV STARTED'.\n"
        "[COBOL CUSTOM TERMINATE]\n           DISPLAY 'CUSTMOV ENDED'.\n"},
       "collections_snippets"},
  };
  for (const auto& example : examples) {
    Result<Collections> collections = Collections::open(example.kind);
    if (!collections) continue;
    if (!collections->exists(example.name) &&
        (!collections->create(example.name) ||
         !collections->set_content(example.name, example.content)))
      continue;
    if (!collections->slot_of(example.name)) (void)collections->use(example.name);
    CollectionManagerDialog dialog(std::move(*collections), parent);
    dialog.select(to_qt(example.name));
    save(&dialog, target, example.picture, written);
  }
}

}  // namespace

QStringList take_screenshots(const QString& folder, ThreadedInterface& port) {
  QStringList written;
  QDir target(folder);
  if (!target.exists() && !QDir().mkpath(folder)) return written;

  MainWindow main(port);
  save(&main, target, "main_window", written);
  {
    UserDataDialog dialog(&main);
    save(&dialog, target, "user_data", written);
  }
  {
    AdvancedOptionsDialog dialog(&main);
    const char* pages[] = {"advanced_options_main", "advanced_options_ftp", "advanced_options_db2"};
    for (int page = 0; page < 3; ++page) {
      dialog.pages()->setCurrentIndex(page);
      save(&dialog, target, pages[page], written);
    }
  }
  {
    BaseParametersDialog dialog(&main);
    save(&dialog, target, "base_parameters", written);
  }
  {
    FileDetailsDialog dialog(FileKind::kOutput, 3, &main);
    save(&dialog, target, "file_details", written);
  }
  {
    GenerateDialog dialog(port, &main);
    save(&dialog, target, "generate", written);
  }
  if (std::unique_ptr<PreviewDialog> preview{PreviewDialog::open_current(&main)})
    save(preview.get(), target, "preview", written);
  {
    // A refusal as the File Details panel shows it.
    ErrorPopup popup(to_qt(file_name_problem("1INPUT")), &main);
    save(&popup, target, "error_popup", written);
  }
  {
    const BaseParameters program = BaseParameters::open();
    Db2DetailsDialog dialog(program.language() == ProgramLanguage::kEasytrieve, AccessKind::kSelect,
                            std::max(program.count(Count::kSelect), 1), &main);
    save(&dialog, target, "db2_details", written);
  }
  if (std::optional<std::string> member = read_key2value("INCLU-1S")) {
    ColumnSelectionDialog dialog(AccessKind::kSelect, 1, *member, Selection::kQuery,
                                 dclgen_member_path(*member), &main);
    dialog.load_previous();
    dialog.search_field()->setText("CITY");
    dialog.search();
    save(&dialog, target, "column_selection", written);
  }
  const DynamicListSetup setup = member_list();
  if (Result<DynamicList> list = DynamicList::open(&setup)) {
    DynamicListDialog dialog(std::move(*list), &main);
    save(&dialog, target, "dynamic_list", written);
  }
  collection_pictures(&main, target, written);
  return written;
}

}  // namespace quorva::gui
