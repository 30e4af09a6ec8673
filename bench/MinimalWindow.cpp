// The reference of the start-up and memory figures: the least a Qt Widgets program does to show a
// window (an application object and one empty widget), measured by the same probe as norvane.
// With --text the window also shows one line of text, so that the cost of the first text (font
// configuration, glyph rendering), which any real window pays, can be told apart.
#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>
#include <QWidget>

#include "app/StartupProbe.hpp"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QWidget window;
  window.setWindowTitle(QStringLiteral("Minimal"));
  window.resize(440, 400);  // about the size of the main menu
  if (QApplication::arguments().contains(QStringLiteral("--text")))
    (new QVBoxLayout(&window))->addWidget(new QLabel(QStringLiteral("Atmosphere data"), &window));
  norvane::StartupProbe probe(&window, [] { return true; });
  window.show();
  return app.exec();
}
