// Start-up and the main window: the working-folder check, the buttons, the level, the
// language, and the pictures.
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "shell/main_dialog.h"
#include "shell/working_folder.h"
#include "store/tag_edit.h"
#include "support/temp_folder.h"
#include "ui/main_window.h"
#include "ui/screenshots.h"
#include "ui/start_up.h"
#include "ui_test_support.h"

namespace quorva::gui::test {

using quorva::test::read_text;
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

[[maybe_unused]] const bool registered =
    add_group("MainWindow", []() -> QObject* { return new MainWindowTest; });

}  // namespace quorva::gui::test

#include "main_window_test.moc"
