// User data and the advanced options: OK writes what the command line writes for the same
// input, with the same messages.
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "support/temp_folder.h"
#include "ui/advanced_options_dialog.h"
#include "ui/user_data_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

using quorva::test::read_text;
using quorva::test::shell_quote;

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
    add_group("Settings", []() -> QObject* { return new SettingsTest; });

}  // namespace quorva::gui::test

#include "settings_test.moc"
