// Start-up and the main window: the working-folder check, the buttons, the level, the
// language, and the pictures.
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "shell/main_dialog.h"
#include "shell/working_folder.h"
#include "store/tag_edit.h"
#include "support/temp_folder.h"
#include "ui/advanced_options_dialog.h"
#include "ui/main_window.h"
#include "ui/screenshots.h"
#include "ui/start_up.h"
#include "ui/user_data_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;
using quorva::test::write_text;

class MainWindowTest : public GuiTest {
  Q_OBJECT
 private slots:
  void buttonsLevelAndLanguageFollowTheFiles() {
    const struct {
      const char* user;
      const char* config;
      bool base_parameters;
      const char* level;
      const char* button;
    } cases[] = {
        {nullptr, "target_language=ENG\nQVjoined=30\n", true, "LEV. 1 - Easy Coder",
         "User Data and FTP Settings"},
        {"sourcedirectory=/x/\n", "target_language=ITA\nQVjoined=7667\n", false,
         "HIGH LEV. - Master Cyber-Demon", "Dati Utente e Impostazioni FTP"},
    };
    for (const auto& c : cases) {
      if (c.user) write_text("Resource/User.dat", c.user);
      write_text("Resource/QVconfig.ini", c.config);
      MainWindow window(folder_->port);
      QVERIFY(window.user_data_button()->isEnabled());
      QCOMPARE(window.base_parameters_button()->isEnabled(), c.base_parameters);
      QCOMPARE(window.generate_button()->isEnabled(), c.base_parameters);
      QVERIFY(window.level()->text().endsWith(c.level));
      QCOMPARE(window.user_data_button()->text(), QString(c.button));
    }
  }

  void tutorialOnTheFirstStartAndFromItsButton() {
    QCOMPARE(folder_->home.run("options set tips=off").status, 0);
    MainWindow window(folder_->port);
    folder_->script.answer(true);  // open the examples
    window.greet();
    QCOMPARE(folder_->script.messages.size(), std::size_t{4});
    QCOMPARE(folder_->script.questions,
             std::vector<std::string>{"Quorva Tutorial|Do you want to open the Examples?"});
    QCOMPARE(folder_->script.opened, std::vector<std::string>{kExamplesFile});
    QVERIFY(read_text(kExamplesFile).find("DB2 SELECT") != std::string::npos);
    window.greet();  // not the first start any more
    QCOMPARE(folder_->script.messages.size(), std::size_t{4});
    QTest::mouseClick(window.tutorial_button(), Qt::LeftButton);  // answered No
    QCOMPARE(folder_->script.messages.size(), std::size_t{8});
    QCOMPARE(folder_->script.opened.size(), std::size_t{1});
  }

  void aFolderThatIsNoWorkingFolderIsMadeOnlyWhenAsked() {
    const std::filesystem::path missing = folder_->home.scratch.path() / "new-home";
    QVERIFY(!enter_home(missing.string()));  // the script answers No
    QVERIFY(!std::filesystem::exists(missing));
    QCOMPARE(folder_->script.messages.front(),
             std::string("The program isn't correctly installed. Repeat the install again"));
    folder_->script.answer(true);
    QVERIFY(enter_home(missing.string()));
    QVERIFY(is_working_folder(missing));
    QCOMPARE(std::filesystem::current_path(), missing);
  }

  void screenshotsOfEveryWindowWriteNothingHere() {
    QCOMPARE(folder_->home.run("--yes generate").status, 0);
    const auto before = snapshot(folder_->home.path);
    const auto sources = snapshot(folder_->shared);  // the collections are made in memory
    const QString pictures =
        QString::fromStdString((folder_->home.scratch.path() / "pictures").string());
    const QStringList written = take_screenshots(pictures, folder_->port);
    QCOMPARE(written.size(), 16);
    for (const QString& file : written) QVERIFY(QFileInfo(file).size() > 1000);
    auto changed = changed_files(before, snapshot(folder_->home.path));
    std::erase(changed, std::string("warning.log"));  // recreated by the Generate panel
    QVERIFY(changed.empty());
    QVERIFY(snapshot(folder_->shared) == sources);
    QVERIFY(folder_->script.messages.empty());
  }
};

// User data and the advanced options: OK writes what the command line writes for the same
// input, with the same messages.
class SettingsTest : public GuiTest {
  Q_OBJECT
 private slots:
  void userDataSavesAsTheCommandLine_data() {
    QTest::addColumn<QStringList>("values");  // ip, user, password, library, folder, name, company
    QTest::addColumn<int>("messages");
    QTest::addColumn<bool>("saved");
    const QString folder = "@FOLDER@";  // the shared source folder, known once inside
    QTest::newRow("plain") << QStringList{"10.9.9.9", "TSO02",        "PW2", "A.B.C",
                                          folder,     "Grace Hopper", "NAVY"}
                           << 0 << true;
    QTest::newRow("cut to the limits")
        << QStringList{"host.example", "TOOLONGUSER", "PASSWORD9",
                       "LIB",          folder,        "A name that runs past thirty characters",
                       "ACME"}
        << 3 << true;
    QTest::newRow("accented name")
        << QStringList{"h", "U", "P", "L", folder, "Nicolò Ré", "Ü"} << 0 << true;
    QTest::newRow("company missing")
        << QStringList{"h", "U", "P", "L", folder, "N", ""} << 1 << false;
  }

  void userDataSavesAsTheCommandLine() {
    QFETCH(QStringList, values);
    QFETCH(int, messages);
    QFETCH(bool, saved);
    values.replaceInStrings("@FOLDER@", QString::fromStdString(folder_path()));
    const char* keys[] = {"ip", "user", "password", "library", "folder", "name", "company"};
    std::string arguments = "--yes user set";
    for (int i = 0; i < 7; ++i)
      arguments += " " + shell_quote(std::string(keys[i]) + "=" + values[i].toStdString());
    const CommandResult cli = folder_->twin_run(arguments);
    QCOMPARE(cli.status == 0, saved);

    UserDataDialog dialog(nullptr);
    const UserDataDialog::Field fields[] = {UserDataDialog::kIp,       UserDataDialog::kUser,
                                            UserDataDialog::kPassword, UserDataDialog::kLibrary,
                                            UserDataDialog::kFolder,   UserDataDialog::kName,
                                            UserDataDialog::kCompany};
    for (int i = 0; i < 7; ++i) {
      dialog.field(fields[i])->setText(values[i]);
      dialog.field(fields[i])->setModified(true);
    }
    dialog.save();
    QCOMPARE(dialog.result() == QDialog::Accepted, saved);
    QCOMPARE(static_cast<int>(folder_->script.messages.size()), messages);
    QCOMPARE(read_text("Resource/User.dat"), read_text(folder_->twin / "Resource/User.dat"));
  }

  void advancedOptionsApplyAsTheCommandLine() {
    const CommandResult cli = folder_->twin_run(
        "options set cobol-break=250 descr-break=30 easytrieve-break=10 tips=OFF "
        "password-alert=ON FTP_LRECL=120 FTP_TLS=EXPLICIT template=Missing.txt");
    QVERIFY(cli.status != 0);  // the template is refused before anything is written
    const CommandResult kept = folder_->twin_run(
        "options set cobol-break=250 descr-break=30 easytrieve-break=10 tips=OFF "
        "decimal-comma=ON password-alert=ON FTP_LRECL=120 FTP_TLS=EXPLICIT");

    AdvancedOptionsDialog dialog(nullptr);
    dialog.cobol_break()->setText("250");
    dialog.descr_break()->setText("30");
    dialog.easytrieve_break()->setText("10");
    dialog.tips()->setChecked(false);
    dialog.decimal_comma()->setChecked(true);
    QTest::mouseClick(dialog.password_alert(), Qt::LeftButton);
    dialog.host_option("FTP_LRECL")->setText("120");
    dialog.host_option("FTP_TLS")->setText("EXPLICIT");
    dialog.apply();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")),
             read_text(folder_->twin / "Resource/QVconfig.ini"));
    // Two clamped break points, reported as the command line reports them.
    QCOMPARE(folder_->script.messages.size(), std::size_t{2});
    QVERIFY(kept.output.find(folder_->script.messages[0]) != std::string::npos);

    // A template outside Resource/ is refused by the chooser and the field keeps its name.
    AdvancedOptionsDialog again(nullptr);
    again.choose_template(QString::fromStdString((folder_->shared / "quormem.txt").string()));
    QCOMPARE(again.alternative_template()->text(), QString("Quormem.txt"));
    QVERIFY(folder_->script.messages.back().rfind("Internal ERROR - Quormem files", 0) == 0);
  }

 private:
  std::string folder_path() const { return folder_->shared.string() + "/"; }
};

[[maybe_unused]] const bool registered =
    add_group("MainWindow", []() -> QObject* { return new MainWindowTest; }) &&
    add_group("Settings", []() -> QObject* { return new SettingsTest; });

}  // namespace quorva::gui::test

#include "main_window_test.moc"
