#include "app/UiHelpers.hpp"

#include <algorithm>

#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QScrollBar>
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

QScrollBar* MakeValueScrollBar(QWidget* parent, const QString& name, int min, int max, int pageStep,
                               int minWidth) {
  auto* s = new QScrollBar(Qt::Horizontal, parent);
  s->setObjectName(name);
  s->setRange(min, max);
  s->setSingleStep(1);
  s->setPageStep(pageStep);
  s->setMinimumWidth(minWidth);
  s->setFocusPolicy(Qt::StrongFocus);
  s->setInvertedControls(false);
  return s;
}

ValueScroll MakeValueScroll(QWidget* parent, const QString& caption, const QString& name, int min, int max,
                            int pageStep, const QString& widestValue, const QString& toolTip) {
  ValueScroll v;
  v.caption = new QLabel(caption, parent);
  v.caption->setObjectName(QStringLiteral("lbl") + name);
  v.bar = MakeValueScrollBar(parent, name + QStringLiteral("Scroll"), min, max, pageStep, 120);
  v.value = new QLabel(QStringLiteral("0"), parent);
  v.value->setObjectName(name + QStringLiteral("Data"));
  v.value->setMinimumWidth(v.value->fontMetrics().horizontalAdvance(widestValue) + 4);
  v.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  for (QWidget* w : {static_cast<QWidget*>(v.caption), static_cast<QWidget*>(v.bar), static_cast<QWidget*>(v.value)})
    w->setToolTip(toolTip);
  return v;
}

QString LocaleText(const std::string& s) {
  QString q = Q(s);
  if (App().decimalSep != u'.') q.replace(QLatin1Char('.'), QChar(App().decimalSep));
  return q;
}

QPoint ClampOnto(const QPoint& at, const QSize& frame, const QRect& area) {
  const int x = std::max(area.left(), std::min(at.x(), area.left() + area.width() - frame.width()));
  const int y = std::max(area.top(), std::min(at.y(), area.top() + area.height() - frame.height()));
  return {x, y};
}

QPoint PlaceBeside(const QRect& anchor, const QSize& frame, const QRect& area) {
  QPoint at(anchor.left() + anchor.width(), anchor.top());  // right
  if (at.x() + frame.width() > area.left() + area.width()) {
    if (anchor.left() - frame.width() >= area.left()) at = QPoint(anchor.left() - frame.width(), anchor.top());
    else at = QPoint(anchor.left(), anchor.top() + anchor.height());  // below
  }
  return ClampOnto(at, frame, area);
}

}  // namespace norvane
