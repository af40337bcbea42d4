// Runs one group of the desktop application's tests: tests_ui GROUP [QtTest options].
#include <QApplication>
#include <QTest>
#include <cstdio>
#include <memory>

#include "ui_test_support.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: tests_ui GROUP [QtTest options]\n");
    return 2;
  }
  std::unique_ptr<QObject> tests(quorva::gui::test::make_group(argv[1]));
  if (!tests) {
    std::fprintf(stderr, "tests_ui: no group %s\n", argv[1]);
    return 2;
  }
  argv[1] = argv[0];
  return QTest::qExec(tests.get(), argc - 1, argv + 1);
}
