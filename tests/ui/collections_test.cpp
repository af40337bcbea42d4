// The collection managers: OK writes what the command line writes for the same input; Cancel
// writes nothing but the window's position.
#include <QLineEdit>
#include <QListWidget>
#include <QTableWidget>
#include <QTest>
#include <memory>

#include "support/temp_folder.h"
#include "ui/collection_dialogs.h"
#include "ui/program_view.h"
#include "ui_test_support.h"

namespace fs = std::filesystem;

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;

namespace {

// The collection files of the shared source folder, taken away after each snapshot so the
// other front end starts from the same folder.
std::map<std::string, std::string> take_collections(const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& [name, text] : snapshot(folder))
    if (name.find("Custom_") == 0 || name.find("Flags_Coll_") == 0 ||
        name.find("Key2Value_") == 0) {
      files[name] = text;
      fs::remove(folder / name);
    }
  return files;
}

QListWidgetItem* item_of(CollectionManagerDialog& dialog, const QString& name) {
  for (int i = 0; i < dialog.list()->count(); ++i)
    if (dialog.list()->item(i)->data(Qt::UserRole).toString() == name)
      return dialog.list()->item(i);
  return nullptr;
}

void set_cell(QTableWidget* table, int row, int column, const QString& value) {
  table->setItem(row, column, new QTableWidgetItem(value));
}

}  // namespace

class CollectionsTest : public GuiTest {
  Q_OBJECT
 private slots:
  void okWritesWhatTheCommandLineWrites() {
    const std::string code = "           DISPLAY 'UP'.";
    const std::string steps[] = {"collections new k2v BR --desc Branches",
                                 "collections set k2v BR '<BRANCH>=MILANO'",
                                 "collections use k2v BR",
                                 "collections new flags EX",
                                 "collections set flags EX CZZ=3 JZZ=1",
                                 "collections use flags EX",
                                 "collections new snippets INIT",
                                 "collections use snippets INIT"};
    for (const std::string& step : steps) QCOMPARE(folder_->twin_run(step).status, 0);
    const CommandResult piped =
        folder_->twin_run("collections set snippets INIT '[COBOL CUSTOM INITIALIZE]'", code + "\n");
    QVERIFY2(piped.status == 0, piped.output.c_str());
    const auto by_command_line = take_collections(folder_->shared);
    QCOMPARE(static_cast<int>(by_command_line.size()), 3);

    // Each kind as made in its window; a row left blank is no row.
    const struct {
      CollectionKind kind;
      QString name, description;
      QStringList cells;  // key, value of each row
      std::string code;
    } made[] = {
        {CollectionKind::kKeyToValue, "BR", "Branches", {"<BRANCH>", "MILANO"}, ""},
        {CollectionKind::kFlags, "EX", "", {"CZZ", "3", "JZZ", "1", "", ""}, ""},
        {CollectionKind::kSnippets, "INIT", "", {}, "[COBOL CUSTOM INITIALIZE]\n" + code},
    };
    for (const auto& m : made) {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(m.kind, nullptr));
      QVERIFY(dialog);
      dialog->name_field()->setText(m.name);
      dialog->create();
      if (!m.description.isEmpty()) dialog->description()->setText(m.description);
      for (int cell = 0; cell < m.cells.size(); ++cell) {
        if (cell % 2 == 0) dialog->add_row();
        if (!m.cells[cell].isEmpty()) set_cell(dialog->rows(), cell / 2, cell % 2, m.cells[cell]);
      }
      if (!m.code.empty()) dialog->code()->setPlainText(QString::fromStdString(m.code));
      item_of(*dialog, m.name)->setCheckState(Qt::Checked);
      dialog->save();
      QCOMPARE(dialog->result(), static_cast<int>(QDialog::Accepted));
    }
    QVERIFY(folder_->script.messages.empty());
    QCOMPARE(take_collections(folder_->shared), by_command_line);
    for (const char* file : {"temp/customK2V.dat", "temp/Flags.dat", "temp/customused.dat"})
      QCOMPARE(read_text(file), read_text(folder_->twin / file));
  }

  // Whatever is done in the window, Cancel leaves every file but the position as it was;
  // a refused row keeps the window open and writes nothing either.
  void cancelAndRefusalsWriteNothing() {
    QCOMPARE(folder_->twin_run("collections new flags OLD").status, 0);  // in the shared folder
    QCOMPARE(folder_->twin_run("collections set flags OLD CAA=1").status, 0);
    const auto before = snapshot(folder_->home.path);
    const auto shared = snapshot(folder_->shared);
    folder_->script.answer(true);
    {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(CollectionKind::kFlags, nullptr));
      QVERIFY(dialog->select("OLD"));
      set_cell(dialog->rows(), 0, 1, "7");
      dialog->name_field()->setText("NEW");
      dialog->copy();
      dialog->remove();
      item_of(*dialog, "OLD")->setCheckState(Qt::Checked);
      dialog->show();
      dialog->reject();
    }
    {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(CollectionKind::kFlags, nullptr));
      QVERIFY(dialog->select("OLD"));
      set_cell(dialog->rows(), 0, 0, "XAB");
      dialog->save();
      QVERIFY(dialog->result() != QDialog::Accepted);
      QCOMPARE(static_cast<int>(folder_->script.messages.size()), 1);
      QVERIFY(!dialog->select("NONE"));
    }
    QCOMPARE(snapshot(folder_->shared), shared);
    auto changed = changed_files(before, snapshot(folder_->home.path));
    std::erase(changed, std::string("temp/quorva.lock"));  // names the lock's last holder
    QCOMPARE(changed, std::vector<std::string>{"Resource/QVconfig.ini"});
    QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")),
             without_positions(before.at("Resource/QVconfig.ini")));
  }
};

[[maybe_unused]] const bool registered =
    add_group("Collections", []() -> QObject* { return new CollectionsTest; });

}  // namespace quorva::gui::test

#include "collections_test.moc"
