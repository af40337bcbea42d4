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

class CollectionsTest : public QObject {
  Q_OBJECT
 private slots:
  void init() { folder_ = std::make_unique<GuiFolder>(); }
  void cleanup() { folder_.reset(); }

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
    const CommandResult piped = quorva::test::run_command(
        "printf '%s\\n' " + shell_quote(code) + " | " + shell_quote(QUORVA_BINARY) + " --home " +
        shell_quote(folder_->twin.string()) +
        " collections set snippets INIT '[COBOL CUSTOM INITIALIZE]'");
    QVERIFY2(piped.status == 0, piped.output.c_str());
    const auto by_command_line = take_collections(folder_->shared);
    QCOMPARE(static_cast<int>(by_command_line.size()), 3);

    {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(CollectionKind::kKeyToValue, nullptr));
      QVERIFY(dialog);
      dialog->name_field()->setText("BR");
      dialog->create();
      dialog->description()->setText("Branches");
      dialog->add_row();
      set_cell(dialog->rows(), 0, 0, "<BRANCH>");
      set_cell(dialog->rows(), 0, 1, "MILANO");
      item_of(*dialog, "BR")->setCheckState(Qt::Checked);
      dialog->save();
      QCOMPARE(dialog->result(), static_cast<int>(QDialog::Accepted));
    }
    {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(CollectionKind::kFlags, nullptr));
      dialog->name_field()->setText("EX");
      dialog->create();
      dialog->add_row();
      dialog->add_row();
      dialog->add_row();  // left blank: not a row
      set_cell(dialog->rows(), 0, 0, "CZZ");
      set_cell(dialog->rows(), 0, 1, "3");
      set_cell(dialog->rows(), 1, 0, "JZZ");
      set_cell(dialog->rows(), 1, 1, "1");
      item_of(*dialog, "EX")->setCheckState(Qt::Checked);
      dialog->save();
      QCOMPARE(dialog->result(), static_cast<int>(QDialog::Accepted));
    }
    {
      std::unique_ptr<CollectionManagerDialog> dialog(
          CollectionManagerDialog::open(CollectionKind::kSnippets, nullptr));
      dialog->name_field()->setText("INIT");
      dialog->create();
      dialog->code()->setPlainText(QString::fromStdString("[COBOL CUSTOM INITIALIZE]\n" + code));
      item_of(*dialog, "INIT")->setCheckState(Qt::Checked);
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

 private:
  std::unique_ptr<GuiFolder> folder_;
};

QObject* make_collections_test() {
  return new CollectionsTest;
}

}  // namespace quorva::gui::test

#include "collections_test.moc"
