// main() of the UI test binaries: a QApplication on the offscreen platform, then GoogleTest.
#include <QApplication>
#include <clocale>
#include <cstdlib>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication app(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
