#include "app/UiHelpers.hpp"

#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>
#include <QWidget>

#include "app/AppContext.hpp"
#include "app/InputRules.hpp"

namespace norvane {

void SetBackground(QWidget* w, const QColor& c) {
  QPalette p = w->palette();
  p.setColor(QPalette::Window, c);
  p.setColor(QPalette::Button, c);
  p.setColor(QPalette::Base, c);
  w->setPalette(p);
  w->setAutoFillBackground(true);
}

void SetTextColor(QWidget* w, const QColor& c) {
  QPalette p = w->palette();
  p.setColor(QPalette::Text, c);
  p.setColor(QPalette::WindowText, c);
  p.setColor(QPalette::ButtonText, c);
  w->setPalette(p);
}

OpenFileResult OpenFileDialog(QWidget* parent, const QString& title, const QString& initialDir,
                              const QString& filter) {
  const QString path = QFileDialog::getOpenFileName(parent, title, initialDir, filter, nullptr,
                                                    QFileDialog::ReadOnly);
  if (path.isEmpty() || !QFileInfo(path).isFile()) return {};
  return {QFileInfo(path).fileName(), path};
}

char16_t LocaleDecimalSep() {
  return DecimalSepFromText(QLocale::system().toString(0.5).toStdU16String());
}

QString LocaleText(const std::string& s) {
  QString q = Q(s);
  if (App().decimalSep != u'.') q.replace(QLatin1Char('.'), QChar(App().decimalSep));
  return q;
}

}  // namespace norvane
