// The dialog frame: kept positions, the Dynamic List, the error popup, and the port's
// hand-over from a worker thread.
#include <QCheckBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QThread>
#include <functional>
#include <memory>

#include "store/config_file.h"
#include "support/temp_folder.h"
#include "ui/advanced_options_dialog.h"
#include "ui/dynamic_list_dialog.h"
#include "ui/error_popup.h"
#include "ui/generate_dialog.h"
#include "ui/user_data_dialog.h"
#include "ui_test_support.h"

namespace quorva::gui::test {
namespace {

using quorva::test::read_text;

struct Opener {
  const char* window;
  std::function<FrameDialog*(ThreadedInterface&)> make;
};

std::vector<Opener> openers() {
  return {
      {"WindowFtpData", [](ThreadedInterface&) { return new UserDataDialog(nullptr); }},
      {"WindowAdvancedOpt", [](ThreadedInterface&) { return new AdvancedOptionsDialog(nullptr); }},
      {"WindowGenerate", [](ThreadedInterface& port) { return new GenerateDialog(port, nullptr); }},
      {"WindowErrorPopups", [](ThreadedInterface&) { return new ErrorPopup("text", nullptr); }},
      {"WindowDynamicList",
       [](ThreadedInterface&) {
         DynamicListSetup setup{{{"A"}}, {"Member"}, {8}, "Dynamic List", {}};
         return new DynamicListDialog(std::move(*DynamicList::open(&setup)), nullptr);
       }},
  };
}

}  // namespace

class FrameTest : public GuiTest {
  Q_OBJECT
 private slots:
  // Each dialog opens where it was left, and Cancel keeps its new place and writes nothing
  // else, whatever was typed.
  void positionsRoundTripAndCancelWritesOnlyThem() {
    for (const Opener& opener : openers()) {
      QVERIFY(save_window_position(opener.window, {40, 50}));
      const auto before = snapshot(folder_->home.path);
      std::unique_ptr<FrameDialog> dialog(opener.make(folder_->port));
      for (QLineEdit* edit : dialog->findChildren<QLineEdit*>()) edit->setText("CHANGED");
      for (QCheckBox* box : dialog->findChildren<QCheckBox*>()) box->setChecked(!box->isChecked());
      dialog->show();
      QCOMPARE(dialog->frameGeometry().topLeft(), QPoint(40, 50));
      dialog->move(60, 70);
      dialog->reject();
      const std::optional<WindowPosition> kept = read_window_position(opener.window);
      QVERIFY2(kept && kept->x == 60 && kept->y == 70, opener.window);
      auto changed = changed_files(before, snapshot(folder_->home.path));
      // Opening the Generate panel recreates warning.log, as it always did.
      std::erase(changed, std::string("warning.log"));
      std::erase(changed, std::string("+warning.log"));
      QCOMPARE(changed, std::vector<std::string>{"Resource/QVconfig.ini"});
      QCOMPARE(without_positions(read_text("Resource/QVconfig.ini")),
               without_positions(before.at("Resource/QVconfig.ini")));
    }
    QVERIFY(folder_->script.messages.empty());
  }

  void negativeAndOffScreenPositionsAreIgnored() {
    const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
    const WindowPosition ignored[] = {{-5, 40}, {40, -1}, {screens.right() + 500, 10}};
    for (const WindowPosition& position : ignored) {
      QVERIFY(save_window_position("WindowFtpData", position));
      UserDataDialog fresh(nullptr);
      fresh.show();
      QVERIFY(fresh.frameGeometry().left() != position.x ||
              fresh.frameGeometry().top() != position.y);
      fresh.hide();
    }
  }

  void dynamicListButtonsAndSorting() {
    DynamicListSetup setup{{{"ORDERS", "2"}, {"CUSTOMER", "10"}, {"ACCOUNT", "3"}},
                           {"Member", "Columns"},
                           {8, 4},
                           "Dynamic List",
                           {true}};
    DynamicListDialog dialog(std::move(*DynamicList::open(&setup)), nullptr);
    QTableWidget* table = dialog.table();
    auto button = [&dialog](const char* label) {
      for (QPushButton* b : dialog.findChildren<QPushButton*>())
        if (b->text() == label) return b;
      return static_cast<QPushButton*>(nullptr);
    };
    emit table->horizontalHeader()->sectionClicked(0);
    QCOMPARE(table->item(0, 0)->text(), QString("ACCOUNT"));
    QCOMPARE(table->item(2, 0)->checkState(), Qt::Checked);  // ORDERS kept its check
    table->item(0, 0)->setCheckState(Qt::Checked);           // ticked by the person
    QTest::mouseClick(button("Invert Selection"), Qt::LeftButton);
    QCOMPARE(table->item(1, 0)->checkState(), Qt::Checked);
    QTest::mouseClick(button("OK"), Qt::LeftButton);
    QCOMPARE(dialog.list().checked_rows(), std::vector<std::size_t>{1});
    QTest::mouseClick(button("Select All!!!"), Qt::LeftButton);
    QCOMPARE(dialog.list().checked_rows().size(), std::size_t{3});
    QTest::mouseClick(button("Deselect All!!!"), Qt::LeftButton);
    QVERIFY(dialog.list().checked_rows().empty());
  }

  // A worker's questions wait for the answer on the window's thread; its progress reaches
  // the window folded, ending at the last position, and its status texts in order.
  void workerCallsReachTheWindowThread() {
    folder_->script.answer(true);
    QList<int> positions;
    QStringList statuses;
    connect(&folder_->port, &ThreadedInterface::progress_changed, this,
            [&positions](const QString&, int position, int) { positions << position; });
    connect(&folder_->port, &ThreadedInterface::status_changed, this,
            [&statuses](const QString& text) { statuses << text; });
    bool answer = false;
    std::unique_ptr<QThread> worker(QThread::create([&answer] {
      ui().set_status("one");
      for (int i = 1; i <= 5000; ++i) ui().set_progress("bar", i, 5000);
      ui().set_status("two");
      answer = ui().ask_yes_no("Title", "Question?");
      ui().show_message("after");
    }));
    worker->start();
    QTRY_VERIFY(worker->isFinished());
    QCoreApplication::processEvents();
    QVERIFY(answer);
    QCOMPARE(folder_->script.questions, std::vector<std::string>{"Title|Question?"});
    QCOMPARE(folder_->script.messages, std::vector<std::string>{"after"});
    QCOMPARE(statuses, QStringList({"one", "two"}));
    QVERIFY(!positions.isEmpty() && positions.size() < 5000);
    QCOMPARE(positions.last(), 5000);
  }
};

[[maybe_unused]] const bool registered =
    add_group("Frame", []() -> QObject* { return new FrameTest; });

}  // namespace quorva::gui::test

#include "frame_test.moc"
