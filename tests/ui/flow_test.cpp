// From an empty working folder to a generated program and its preview through the windows
// alone, in either language: user data, base parameters, file details, a DB2 access with
// its columns, GO, the preview.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>

#include "store/config_file.h"
#include "support/members.h"
#include "support/temp_folder.h"
#include "ui/base_parameters_dialog.h"
#include "ui/column_selection_dialog.h"
#include "ui/db2_details_dialog.h"
#include "ui/file_details_dialog.h"
#include "ui/generate_dialog.h"
#include "ui/preview_dialog.h"
#include "ui/program_view.h"
#include "ui/user_data_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

namespace fs = std::filesystem;
using quorva::test::read_text;
using quorva::test::small_member;
using quorva::test::write_text;

class FlowTest : public QObject {
  Q_OBJECT
 private slots:
  void definedGeneratedAndPreviewedInTheWindows_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("done");  // the status text GO ends with
    QTest::newRow("English") << "ENG"
                             << "Quorva JOB complete!!!";
    QTest::newRow("Italian") << "ITA"
                             << "Lavoro Quorva completato!!!";
  }

  void definedGeneratedAndPreviewedInTheWindows() {
    QFETCH(QString, language);
    QFETCH(QString, done);
    GuiFolder folder(QuorvaHome::kEmpty);
    const fs::path& source = folder.shared;
    write_text(source / "ORDERS.DCL", small_member("PROD.ORDERS", "DCLORDERS"));
    TagEdit config = config_edit();
    config.set("target_language", language.toStdString());
    QVERIFY(config.apply(false).ok());

    {
      UserDataDialog user(nullptr);
      const QString values[] = {"10.1.1.1",
                                "TSO01",
                                "SECRET",
                                "PROD.SOURCE",
                                QString::fromStdString(source.string() + "/"),
                                "Ada Byron",
                                "ACME"};
      for (int f = 0; f < UserDataDialog::kFieldCount; ++f) {
        user.field(static_cast<UserDataDialog::Field>(f))->setText(values[f]);
        user.field(static_cast<UserDataDialog::Field>(f))->setModified(true);
      }
      user.save();
      QCOMPARE(user.result(), int(QDialog::Accepted));
    }
    {
      BaseParametersDialog base(nullptr);
      QTest::keyClicks(base.name(), "ordrep");
      base.language()->setCurrentIndex(0);
      base.count(Count::kFilein)->setCurrentIndex(1);
      base.count(Count::kFileout)->setCurrentIndex(1);
      base.count(Count::kSelect)->setCurrentIndex(1);
      base.confirm();
      QCOMPARE(base.result(), int(QDialog::Accepted));
    }
    {
      FileDetailsDialog files(FileKind::kInput, 1, nullptr);
      files.field(1, FileDetailsDialog::kName)->setText("ORDIN");
      files.field(1, FileDetailsDialog::kName)->setModified(true);
      files.confirm();
      QCOMPARE(files.result(), int(QDialog::Accepted));
    }
    {
      Db2DetailsDialog db2(false, AccessKind::kSelect, 1, nullptr);
      db2.field(1, Db2DetailsDialog::kInclude)->setText("ORDERS");
      db2.field(1, Db2DetailsDialog::kInclude)->setModified(true);
      db2.autofill()->setChecked(true);
      db2.apply();
      QCOMPARE(db2.result(), int(QDialog::Accepted));
    }
    for (Selection selection : {Selection::kQuery, Selection::kWhere}) {
      ColumnSelectionDialog columns(AccessKind::kSelect, 1, "ORDERS", selection,
                                    (source / "ORDERS.DCL").string(), nullptr);
      columns.root()->child(selection == Selection::kQuery ? 1 : 0)->setCheckState(0, Qt::Checked);
      columns.apply();
      QCOMPARE(columns.result(), int(QDialog::Accepted));
    }

    GenerateDialog generate(folder.port, nullptr);
    QSignalSpy ended(&generate, &GenerateDialog::generation_ended);
    generate.go();
    QVERIFY(ended.count() == 1 || ended.wait(20000));
    QCOMPARE(generate.last_result().status, GenerationResult::kDone);
    QVERIFY2(generate.status()->toPlainText().contains(done),
             qPrintable(generate.status()->toPlainText()));
    const std::string program = read_text(source / "ORDREP.txt");
    for (const char* part :
         {"PROGRAM-ID. ORDREP", "SELECT ORDIN", "FROM PROD.ORDERS", "= :ID", ":NAME"})
      QVERIFY2(program.find(part) != std::string::npos, part);
    std::unique_ptr<PreviewDialog> preview(PreviewDialog::open_current(nullptr));
    QVERIFY(preview);
    QCOMPARE(preview->view()->toPlainText().toStdString(), program);
    QVERIFY(folder.script.messages.empty());
  }
};

[[maybe_unused]] const bool registered =
    add_group("Flow", []() -> QObject* { return new FlowTest; });

}  // namespace quorva::gui::test

#include "flow_test.moc"
