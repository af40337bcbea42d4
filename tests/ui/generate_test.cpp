// Generate the Program: GO from the window writes what `quorva generate` writes, off the
// window's thread; a declined overwrite leaves the program alone; the preview shows it.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>
#include <memory>

#include "store/config_file.h"
#include "support/ftp_test_server.h"
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

class GenerateTest : public GuiTest {
  Q_OBJECT
 private slots:
  void goWritesWhatTheCommandLineWrites() {
    // The twin has its own source folder, so each writes its own program.
    QCOMPARE(folder_->twin_run("--yes user set folder=" + twin_programs()).status, 0);
    QCOMPARE(folder_->twin_run("--yes generate").status, 0);
    GenerateDialog dialog(folder_->port, nullptr);
    QVERIFY(dialog.status()->toPlainText().contains("Waiting START Process for :CUSTMOV"));
    QSignalSpy ended(&dialog, &GenerateDialog::generation_ended);
    dialog.go();
    QVERIFY(dialog.busy() || ended.count() == 1);
    QVERIFY(ended.count() == 1 || ended.wait(20000));
    QCOMPARE(dialog.last_result().status, GenerationResult::kDone);
    const std::string program = read_text(folder_->shared / "CUSTMOV.txt");
    QVERIFY(program.size() > 1000);
    QCOMPARE(program, read_text(folder_->twin / "programs" / "CUSTMOV.txt"));
    QCOMPARE(read_text("Resource/QVconfig.ini"),
             read_text(folder_->twin / "Resource/QVconfig.ini"));
    for (int i = 0; i < 3; ++i) QCOMPARE(dialog.bar(i)->value(), dialog.bar(i)->maximum());
    QVERIFY(dialog.status()->toPlainText().contains("Quorva JOB complete!!!"));
    QVERIFY(folder_->script.questions.empty());

    // The preview: the program, its break point, nothing past it.
    std::unique_ptr<PreviewDialog> preview(PreviewDialog::open_current(nullptr));
    QVERIFY(preview);
    QCOMPARE(preview->view()->toPlainText().toStdString(), program);
    QCOMPARE(preview->view()->break_point(), 72);
    QCOMPARE(preview->view()->lines_past_break_point(), 0);
    QVERIFY(preview->view()->find_next("PROCEDURE DIVISION"));
    QVERIFY(!preview->view()->find_next("NOT IN THE PROGRAM"));
  }

  void declinedOverwriteLeavesTheProgram() {
    write_text(folder_->shared / "CUSTMOV.txt", "old program\n");
    const auto before = snapshot(folder_->home.path);
    GenerateDialog dialog(folder_->port, nullptr);
    folder_->script.answer(false);
    dialog.go();
    QCOMPARE(dialog.last_result().status, GenerationResult::kDeclined);
    QVERIFY(!dialog.busy());
    QCOMPARE(folder_->script.questions.size(), std::size_t{1});
    QVERIFY(folder_->script.questions[0].rfind("Existing File|", 0) == 0);
    QCOMPARE(read_text(folder_->shared / "CUSTMOV.txt"), std::string("old program\n"));
    // Only warning.log, recreated when the panel opened.
    QCOMPARE(changed_files(before, snapshot(folder_->home.path)),
             std::vector<std::string>{"+warning.log"});
  }

  void missingProgramAndRefusedNote() {
    QVERIFY(!PreviewDialog::open_current(nullptr));
    QVERIFY(folder_->script.messages.back().rfind("Cannot find the following file:\n", 0) == 0);
    GenerateDialog dialog(folder_->port, nullptr);
    QSignalSpy transferred(&dialog, &GenerateDialog::transfer_ended);
    folder_->script.answer(false);  // the Information Note is not accepted
    dialog.transfer();
    QVERIFY(folder_->script.questions.back().find("I've readed , understood and accepted") !=
            std::string::npos);
    QVERIFY(!dialog.busy());
    QCOMPARE(transferred.count(), 0);
  }

  void transferFromTheWindowKeepsTheOldMember() {
    const std::filesystem::path library = folder_->home.scratch.path() / "host" / "USR.SOURCE";
    std::filesystem::create_directories(library);
    write_text(library / "CUSTMOV", "OLD VERSION\n");
    quorva::test::FtpTestServer server(library.parent_path(), "TSO01", "SECRET");
    if (!server.running()) QSKIP("no FTP test server (python3-pyftpdlib)");
    QCOMPARE(folder_->home.run("user set ip=" + server.address()).status, 0);
    // The batch calls the desktop application back as its FTP client.
    qputenv("QUORVA_EXE", QUORVA_GUI_BINARY);
    GenerateDialog dialog(folder_->port, nullptr);
    QSignalSpy generated(&dialog, &GenerateDialog::generation_ended);
    dialog.go();
    QVERIFY(generated.count() == 1 || generated.wait(20000));
    QCOMPARE(dialog.last_result().status, GenerationResult::kDone);

    QSignalSpy transferred(&dialog, &GenerateDialog::transfer_ended);
    folder_->script.answer(true);  // the Information Note is accepted
    QCOMPARE(dialog.transfer_button()->text(), QString("Transfer the Program via FTP !!!"));
    QTest::mouseClick(dialog.transfer_button(), Qt::LeftButton);
    QVERIFY(transferred.count() == 1 || transferred.wait(30000));
    qunsetenv("QUORVA_EXE");
    QCOMPARE(transferred.front().front().toBool(), true);
    // The source library gets the program without its run JCL (CUSTMOV.jcl, the end of the
    // program file), each record without its trailing blanks as the host keeps it.
    std::string sent = read_text(folder_->shared / "CUSTMOV.txt");
    const std::string jcl = read_text(folder_->shared / "CUSTMOV.jcl");
    QVERIFY(!jcl.empty() && sent.ends_with(jcl));
    sent.erase(sent.size() - jcl.size());
    for (std::size_t end; (end = sent.find(" \n")) != std::string::npos;) sent.erase(end, 1);
    QCOMPARE(read_text(library / "CUSTMOV"), sent);
    QCOMPARE(read_text(folder_->shared / "CUSTMOV_1.BKP"), std::string("OLD VERSION\n"));
    QVERIFY(!std::filesystem::exists("temp/FtpQuorva.ini"));
  }

 private:
  std::string twin_programs() const { return (folder_->twin / "programs").string() + "/"; }
};

// From an empty working folder to a generated program and its preview through the windows
// alone, in either language: user data, base parameters, file details, a DB2 access with
// its columns, GO, the preview.
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
    add_group("Generate", []() -> QObject* { return new GenerateTest; }) &&
    add_group("Flow", []() -> QObject* { return new FlowTest; });

}  // namespace quorva::gui::test

#include "generate_test.moc"
