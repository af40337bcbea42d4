// The DB2 access details and the column selection: OK writes what the command line writes
// for the same input, Cancel only the position, and the column tree round-trips through its
// column file.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <memory>

#include "panels/column_selection.h"
#include "support/temp_folder.h"
#include "ui/column_selection_dialog.h"
#include "ui/db2_details_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;

namespace {

constexpr const char* kFiles[] = {"temp/key2value.dat", "temp/col_select.dat",
                                  "temp/col_fetch.dat"};

// The working folder's files; the lock only names its last holder.
std::map<std::string, std::string> work() {
  std::map<std::string, std::string> files = snapshot(".");
  files.erase("temp/quorva.lock");
  return files;
}

}  // namespace

class Db2Test : public GuiTest {
  Q_OBJECT
 private slots:
  void init() {
    folder_ = std::make_unique<GuiFolder>();
    // The program has the accesses the rows stand for.
    for (bool twin : {false, true}) {
      const char* counts = "program set select=1 fetch=2";
      QCOMPARE((twin ? folder_->twin_run(counts) : folder_->home.run(counts)).status, 0);
    }
  }

  void detailsOkWritesAsTheCommandLine_data() {
    QTest::addColumn<int>("kind");            // 0 SELECT, 1 FETCH
    QTest::addColumn<QStringList>("values");  // owner, table, cursor, description, include
    QTest::addColumn<bool>("autofill");
    QTest::newRow("new member, table follows it")
        << 0 << QStringList{"", "", "", "Orders of the day", "ORDERS"} << false;
    QTest::newRow("fields cleared") << 1 << QStringList{"", "", "", "", ""} << false;
    QTest::newRow("autofill from the member")
        << 1 << QStringList{"", "", "CSRNEW", "Read them all", "CUSTOMER"} << true;
    QTest::newRow("accented description")
        << 0 << QStringList{"PROD", "CUSTOMER", "", "Città e società", "CUSTOMER"} << false;
  }

  void detailsOkWritesAsTheCommandLine() {
    QFETCH(int, kind);
    QFETCH(QStringList, values);
    QFETCH(bool, autofill);
    const AccessKind access = kind == 0 ? AccessKind::kSelect : AccessKind::kFetch;
    const char* options[] = {"--owner", "--table", "--cursor", "--desc", "--include"};
    // The member first, as the dialog takes it.
    std::string arguments = std::string("db2 ") + (kind == 0 ? "select" : "fetch") + " 1 " +
                            options[4] + " " + shell_quote(values[4].toStdString());
    for (int c = 0; c < 4; ++c)
      arguments += std::string(" ") + options[c] + " " + shell_quote(values[c].toStdString());
    arguments += std::string(" --autofill ") + (autofill ? "on" : "off");
    QCOMPARE(folder_->twin_run(arguments).status, 0);

    Db2DetailsDialog dialog(false, access, 1, nullptr);
    for (int c = 0; c < Db2DetailsDialog::kColumnCount; ++c) {
      QLineEdit* edit = dialog.field(1, static_cast<Db2DetailsDialog::Column>(c));
      edit->setText(values[c]);
      edit->setModified(true);
    }
    dialog.autofill()->setChecked(autofill);
    dialog.apply();
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    for (const char* file : kFiles) QCOMPARE(read_text(file), read_text(folder_->twin / file));
    QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")),
             without_positions(read_text(folder_->twin / "Resource/QVconfig.ini")));
  }

  void cancelAndQuestionsWriteNothing() {
    const auto before = work();
    {
      Db2DetailsDialog dialog(false, AccessKind::kSelect, 1, nullptr);
      dialog.field(1, Db2DetailsDialog::kTable)->setText("OTHER");
      dialog.field(1, Db2DetailsDialog::kTable)->setModified(true);
      dialog.reject();
    }
    QString changed;
    for (const std::string& name : changed_files(before, work()))
      changed += QString::fromStdString(name) + " ";
    QCOMPARE(changed, QString("Resource/QVconfig.ini "));
    QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")),
             without_positions(before.at("Resource/QVconfig.ini")));

    // Two rows with one cursor: Yes to "correct them now" keeps the window open.
    const auto asked = work();
    Db2DetailsDialog dialog(false, AccessKind::kFetch, 2, nullptr);
    dialog.field(2, Db2DetailsDialog::kCursor)->setText("CSRORD1");
    dialog.field(2, Db2DetailsDialog::kCursor)->setModified(true);
    folder_->script.answer(true);
    dialog.apply();
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(folder_->script.questions.size(), std::size_t{1});
    QVERIFY(changed_files(asked, work()).empty());
  }

  void fieldsSelectNeedsTheMember() {
    Db2DetailsDialog dialog(false, AccessKind::kSelect, 1, nullptr);
    dialog.field(1, Db2DetailsDialog::kInclude)->setText("NOSUCH");
    dialog.field(1, Db2DetailsDialog::kInclude)->setModified(true);
    dialog.select_fields(Selection::kQuery);
    QVERIFY(!folder_->script.messages.empty());
    QVERIFY(folder_->script.messages.back().find("Cannot find the following DCLGEN file") !=
            std::string::npos);
    QVERIFY(folder_->script.messages.back().find("NOSUCH.DCL") != std::string::npos);
  }

  void columnTreeWritesAsTheCommandLineAndComesBack() {
    const std::string member = (folder_->shared / "CUSTOMER.DCL").string();
    QCOMPARE(folder_->twin_run("columns set select 1 where --all --struct WS-CUST").status, 0);
    {
      ColumnSelectionDialog dialog(AccessKind::kSelect, 1, "CUSTOMER", Selection::kWhere, member,
                                   nullptr);
      QVERIFY(dialog.root()->childCount() > 2);
      // The root marks every column.
      dialog.root()->setCheckState(0, Qt::Checked);
      QCOMPARE(dialog.model().selected_count(), dialog.root()->childCount());
      for (int i = 0; i < dialog.root()->childCount(); ++i)
        QCOMPARE(dialog.root()->child(i)->checkState(0), Qt::Checked);
      QVERIFY(dialog.total()->text().endsWith(QString::number(dialog.root()->childCount())));
      dialog.structure_field()->setText("WS-CUST");
      dialog.apply();
      QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    }
    for (const char* file : kFiles) QCOMPARE(read_text(file), read_text(folder_->twin / file));

    // One column cleared, then the previous selection brings the file's marks back.
    ColumnSelectionDialog again(AccessKind::kSelect, 1, "CUSTOMER", Selection::kWhere, member,
                                nullptr);
    QCOMPARE(again.model().selected_count(), 0);
    again.load_previous();
    const int all = again.root()->childCount();
    QCOMPARE(again.model().selected_count(), all);
    QCOMPARE(again.root()->checkState(0), Qt::Checked);
    again.root()->child(0)->setCheckState(0, Qt::Unchecked);
    QCOMPARE(again.model().selected_count(), all - 1);
    QCOMPARE(again.root()->checkState(0), Qt::PartiallyChecked);
    QCOMPARE(again.structure_field()->text(), QString("WS-CUST"));
  }

  void searchMovesThroughTheHits() {
    ColumnSelectionDialog dialog(AccessKind::kFetch, 1, "ORDERS", Selection::kQuery,
                                 (folder_->shared / "ORDERS.DCL").string(), nullptr);
    // "_" is in some of the member's column names, not in all.
    int hits = 0;
    for (int i = 0; i < dialog.root()->childCount(); ++i)
      hits += dialog.root()->child(i)->text(0).contains('_');
    QVERIFY(hits >= 2);
    dialog.search_field()->setText("_");
    QList<QTreeWidgetItem*> visited;
    for (int i = 0; i < hits; ++i) {
      dialog.search();
      QVERIFY(dialog.tree()->currentItem()->text(0).contains('_'));
      QVERIFY(!visited.contains(dialog.tree()->currentItem()));
      visited.append(dialog.tree()->currentItem());
    }
    QVERIFY(folder_->script.messages.empty());
    dialog.search();
    QVERIFY(!folder_->script.messages.empty());
    QVERIFY(folder_->script.messages.back().find("FURTHER") != std::string::npos);
  }
};

[[maybe_unused]] const bool registered = add_group("Db2", []() -> QObject* { return new Db2Test; });

}  // namespace quorva::gui::test

#include "db2_test.moc"
