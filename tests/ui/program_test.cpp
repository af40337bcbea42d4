// Base Parameters and File Details: OK writes what the command line writes for the same
// input, Cancel only the position, and the windows follow the panels' rules.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <memory>

#include "panels/column_selection.h"
#include "support/temp_folder.h"
#include "ui/base_parameters_dialog.h"
#include "ui/column_selection_dialog.h"
#include "ui/db2_details_dialog.h"
#include "ui/file_details_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;

namespace {

// A KEY=VALUE of `quorva program set` made on the window.
void choose(BaseParametersDialog& dialog, const std::string& key, const QString& value) {
  const std::pair<const char*, Switch> switches[] = {{"constants", Switch::kConstants},
                                                     {"thru", Switch::kThru},
                                                     {"jcl", Switch::kJcl},
                                                     {"comments", Switch::kComments},
                                                     {"commit", Switch::kCommit}};
  const std::pair<const char*, Count> counts[] = {
      {"filein", Count::kFilein}, {"fileout", Count::kFileout}, {"report", Count::kReport},
      {"select", Count::kSelect}, {"delete", Count::kDelete},   {"parameters", Count::kParameters}};
  if (key == "name") {
    dialog.name()->clear();
    QTest::keyClicks(dialog.name(), value);
  } else if (key == "language") {
    dialog.language()->setCurrentIndex(value == "cobol" ? 0 : 1);
  } else if (key == "kind") {
    dialog
        .kind(value == "match"     ? ProgramKind::kMatch
              : value == "routine" ? ProgramKind::kRoutine
                                   : ProgramKind::kBatch)
        ->setChecked(true);
  } else if (key == "description") {
    dialog.description()->setPlainText(value);
  }
  for (auto [name, which] : switches)
    if (key == name) dialog.switch_box(which)->setChecked(value == "on");
  for (auto [name, which] : counts)
    if (key == name) dialog.count(which)->setCurrentIndex(value.toInt());
}

}  // namespace

class ProgramTest : public GuiTest {
  Q_OBJECT
 private slots:
  void baseParametersOkWritesAsTheCommandLine() {
    // KEY=VALUE choices separated by "|", the language first as the command line takes it.
    const char* cases[] = {
        "language=easytrieve|name=payroll|kind=match|report=2|filein=2|jcl=off|commit=off|"
        "description=Monthly payroll with a word far too long: "
        "ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJ end",
        "language=cobol|name=CUST01|kind=routine|thru=on|constants=on|fileout=3|delete=2|"
        "parameters=1|description="};
    for (const char* choices : cases) {
      std::string arguments = "program set";
      BaseParametersDialog dialog(nullptr);
      for (const QString& choice : QString(choices).split('|')) {
        arguments += " " + shell_quote(choice.toStdString());
        choose(dialog, choice.section('=', 0, 0).toStdString(), choice.section('=', 1));
      }
      QCOMPARE(folder_->twin_run(arguments).status, 0);
      dialog.confirm();
      QCOMPARE(dialog.result(), int(QDialog::Accepted));
      QCOMPARE(read_text("temp/Parbase.dat"), read_text(folder_->twin / "temp/Parbase.dat"));
    }
  }

  void aRefusedNameKeepsWhatThePanelKept() {
    const struct {
      const char* typed;
      const char* shown;
      std::size_t messages;
    } cases[] = {{"1", "CUSTMOV", 1},
                 {"pay01", "PAY01", 0},
                 {"ab-c", "ABC", 1},
                 {"TOOLONGNAME", "TOOLONGN", 3}};
    for (const auto& c : cases) {
      folder_->script.messages.clear();
      BaseParametersDialog dialog(nullptr);
      dialog.name()->clear();
      QTest::keyClicks(dialog.name(), c.typed);
      QCOMPARE(dialog.name()->text(), QString(c.shown));
      QCOMPARE(dialog.panel().name(), std::string(c.shown));
      QCOMPARE(folder_->script.messages.size(), c.messages);
    }
    QVERIFY(folder_->script.messages.front().rfind("The Program Name can hold 8", 0) == 0);
  }

  void languageRulesToggleTheControls() {
    QCOMPARE(
        folder_->home.run("program set language=easytrieve kind=match filein=2 report=4").status,
        0);
    BaseParametersDialog dialog(nullptr);
    QVERIFY(dialog.kind(ProgramKind::kMatch)->isChecked());
    QVERIFY(!dialog.kind(ProgramKind::kRoutine)->isEnabled());
    QVERIFY(!dialog.switch_box(Switch::kThru)->isEnabled());
    QCOMPARE(dialog.count(Count::kReport)->currentText(), QString("4"));
    dialog.language()->setCurrentIndex(0);  // Cobol: no match, no reports
    QVERIFY(dialog.kind(ProgramKind::kBatch)->isChecked());
    QVERIFY(!dialog.kind(ProgramKind::kMatch)->isEnabled());
    QVERIFY(dialog.kind(ProgramKind::kRoutine)->isEnabled());
    QVERIFY(dialog.switch_box(Switch::kThru)->isEnabled());
    QCOMPARE(dialog.count(Count::kReport)->currentText(), QString("0"));
    QVERIFY(!dialog.count(Count::kReport)->isEnabled());
    QVERIFY(!dialog.details(Count::kReport)->isEnabled());
    dialog.switch_box(Switch::kThru)->setChecked(true);
    dialog.language()->setCurrentIndex(1);  // Easytrieve: THRU unchecked and disabled
    QVERIFY(!dialog.switch_box(Switch::kThru)->isChecked());
    QVERIFY(dialog.count(Count::kReport)->isEnabled());
  }

  void helpAreaFollowsThePointer() {
    BaseParametersDialog dialog(nullptr);
    const std::pair<QWidget*, const char*> fields[] = {
        {dialog.count(Count::kFetch),
         "Select the required Db2 Fetch accesses then proceed for DETAILS."},
        {dialog.kind(ProgramKind::kRoutine),
         "Routine are programs called from other programs, with a specific task.They have an "
         "exchange data area."},
        {dialog.switch_box(Switch::kThru), "Insert the THRU at every PERFORM (Old School)."},
        {dialog.description()->viewport(),
         "Specify the program description that will appear inside the source."}};
    for (const auto& [widget, help] : fields) {
      QEvent enter(QEvent::Enter);
      QApplication::sendEvent(widget, &enter);
      QCOMPARE(dialog.help_area()->text(), QString(help));
    }
  }

  void cancelAndNewProgramAnsweredNoWriteOnlyThePosition() {
    const auto before = snapshot(folder_->home.path);
    const std::string config = read_text("Resource/QVconfig.ini");
    for (bool details : {false, true}) {
      BaseParametersDialog dialog(nullptr);
      choose(dialog, "name", "OTHER");
      choose(dialog, "fileout", "4");
      if (details) {
        FileDetailsDialog files(FileKind::kOutput, 4, &dialog);
        files.field(3, FileDetailsDialog::kName)->setText("NEWOUT");
        files.reject();
      }
      dialog.new_program_button()->click();  // the script answers No
      QCOMPARE(dialog.result(), int(QDialog::Rejected));
      dialog.reject();
    }
    auto changed = changed_files(before, snapshot(folder_->home.path));
    std::erase(changed, std::string("temp/quorva.lock"));  // names who last wrote the folder
    QCOMPARE(changed, std::vector<std::string>{"Resource/QVconfig.ini"});
    QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")), without_positions(config));
    QCOMPARE(folder_->script.questions.size(), std::size_t{2});
    QVERIFY(folder_->script.questions[0].rfind("Erasing Fields|", 0) == 0);

    folder_->script.answer(true);
    BaseParametersDialog dialog(nullptr);
    dialog.new_program_button()->click();
    QCOMPARE(dialog.result(), BaseParametersDialog::kRenewed);
    QVERIFY(!std::filesystem::exists("temp/Parbase.dat"));  // no defaults in this folder
  }

  void detailsOpenForTheirKindWithTheCountShown() {
    BaseParametersDialog dialog(nullptr);
    const struct {
      Count count;
      int chosen;
      int kind;  // FileKind or AccessKind
    } cases[] = {{Count::kFileout, 3, int(FileKind::kOutput)},
                 {Count::kFilein, 0, int(FileKind::kInput)},
                 {Count::kUpdate, 2, int(AccessKind::kUpdate)},
                 {Count::kDelete, 1, int(AccessKind::kDelete)}};
    for (const auto& c : cases) {
      dialog.count(c.count)->setCurrentIndex(c.chosen);
      std::pair<int, int> seen{-1, -1};
      QTimer::singleShot(0, [&seen] {
        QWidget* open = QApplication::activeModalWidget();
        if (auto* files = qobject_cast<FileDetailsDialog*>(open))
          seen = {int(files->panel().kind()), files->panel().count()};
        if (auto* db2 = qobject_cast<Db2DetailsDialog*>(open))
          seen = {int(db2->panel().kind()), db2->panel().count()};
        if (open) open->close();
      });
      dialog.details(c.count)->click();
      QCOMPARE(seen, std::make_pair(c.kind, c.chosen));
    }
  }

  void fileDetailsOkWritesAsTheCommandLine() {
    const struct {
      FileKind kind;
      const char* word;
      int row;
      FileDetailsDialog::Field field;
      const char* option;
      const char* value;
    } rows[] = {{FileKind::kOutput, "output", 3, FileDetailsDialog::kName, "--name", "OUTC"},
                {FileKind::kOutput, "output", 2, FileDetailsDialog::kDescription, "--desc",
                 "Checked movements, second copy"},
                {FileKind::kOutput, "output", 3, FileDetailsDialog::kReportName, "--report-name",
                 "REPORTC"},
                {FileKind::kInput, "input", 1, FileDetailsDialog::kName, "--name", ""},
                {FileKind::kReport, "report", 1, FileDetailsDialog::kName, "--name", "PRINT1"}};
    const char* counts = "program set language=easytrieve fileout=3 filein=1 report=1";
    QCOMPARE(folder_->home.run(counts).status, 0);
    QCOMPARE(folder_->twin_run(counts).status, 0);
    for (const auto& r : rows) {
      QCOMPARE(folder_
                   ->twin_run(std::string("files ") + r.word + " " + std::to_string(r.row) + " " +
                              r.option + " " + shell_quote(r.value))
                   .status,
               0);
      FileDetailsDialog dialog(r.kind, r.kind == FileKind::kOutput ? 3 : 1, nullptr);
      dialog.field(r.row, r.field)->setText(r.value);
      dialog.field(r.row, r.field)->setModified(true);
      dialog.confirm();
      QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }
    QCOMPARE(folder_->twin_run("files output 2 --excel").status, 0);
    FileDetailsDialog dialog(FileKind::kOutput, 3, nullptr);
    dialog.excel(2)->click();
    dialog.confirm();
    for (const char* file : {"temp/key2value.dat", "temp/Detfiles.dat"})
      QCOMPARE(read_text(file), read_text(folder_->twin / file));
    QVERIFY(folder_->script.messages.empty());
  }

  void excelLockAndRefusedFileNames() {
    QCOMPARE(folder_->home.run("program set fileout=4").status, 0);
    FileDetailsDialog dialog(FileKind::kOutput, 4, nullptr);
    QVERIFY(dialog.excel(1)->isChecked());  // fileout_excel=1 in the sample
    QVERIFY(dialog.excel(2)->isEnabled() && !dialog.excel(3)->isEnabled());
    QVERIFY(!dialog.field(5, FileDetailsDialog::kName)->isEnabled());
    dialog.excel(2)->click();
    dialog.excel(1)->click();  // unchecks and locks row 2
    QVERIFY(!dialog.excel(2)->isChecked() && !dialog.excel(2)->isEnabled());
    QLineEdit* name = dialog.field(2, FileDetailsDialog::kName);
    name->setText("FILEIN2");  // would be replaced by row 2's input name
    name->setModified(true);
    dialog.confirm();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QCOMPARE(name->text(), QString("MOVEOUT"));
    QCOMPARE(folder_->script.messages.size(), std::size_t{1});
    dialog.confirm();
    QCOMPARE(read_text("temp/Detfiles.dat"), std::string("fileout_excel=0\n"));
    FileDetailsDialog report(FileKind::kReport, 2, nullptr);
    QVERIFY(!report.excel(1)->isEnabled());
    QCOMPARE(report.heading()->text(), QString("Complete the informations for REPORT"));
  }
};

// The DB2 access details and the column selection: OK writes what the command line writes
// for the same input, Cancel only the position, and the column tree round-trips through its
// column file.
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

[[maybe_unused]] const bool registered =
    add_group("Program", []() -> QObject* { return new ProgramTest; }) &&
    add_group("Db2", []() -> QObject* { return new Db2Test; });

}  // namespace quorva::gui::test

#include "program_test.moc"
