#include "app/UiHelpers.hpp"

#include <algorithm>

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QWidget>

#include "app/AppContext.hpp"
#include "app/InputRules.hpp"

namespace norvane {

const ColourScheme kDayColours{
    .night = false,
    .validText{0, 128, 0},
    .invalidText{192, 0, 0},
    .calculateArmed{208, 255, 208},
    .focusedButton{176, 208, 255},
    .focusedCalculate{128, 224, 128},
    .menuIdle{208, 208, 208},
    .menuHighlight{255, 240, 224},
    .menuOpen{255, 208, 208},
    .marked{255, 236, 150},
    .paper{252, 252, 250},
    .frame{150, 150, 150},
    .grid{226, 226, 226},
    .ink{40, 40, 40},
    .darkLabel{60, 60, 60},
    .label{90, 90, 90},
    .quietLabel{110, 110, 110},
    .course{120, 120, 120},
    .entry{{40, 150, 60}, {225, 130, 20}, {45, 105, 205}},
    .entryText{QColor(40, 150, 60).darker(160), QColor(225, 130, 20).darker(160), QColor(45, 105, 205).darker(160)},
    .track{192, 0, 0},
    .wind{45, 105, 205},
    .path{30, 80, 170},
    .changeover{225, 120, 20},
    .changeoverText{QColor(225, 120, 20).darker(130)},
};

// Dark grey-blue surfaces and a warm, dimmed light grey for text: nothing near white, so that the
// screen does not dazzle in a dark cockpit.
const ColourScheme kNightColours{
    .night = true,
    .validText{104, 196, 116},
    .invalidText{236, 112, 100},
    .calculateArmed{26, 54, 34},
    .focusedButton{30, 46, 78},
    .focusedCalculate{30, 68, 42},
    .menuIdle{46, 48, 53},
    .menuHighlight{80, 66, 48},
    .menuOpen{92, 52, 54},
    .marked{78, 66, 28},
    .paper{20, 22, 25},
    .frame{84, 88, 94},
    .grid{42, 45, 50},
    .ink{188, 190, 184},
    .darkLabel{170, 172, 166},
    .label{150, 152, 148},
    .quietLabel{140, 142, 138},
    .course{104, 108, 114},
    .entry{{50, 115, 65}, {150, 95, 35}, {55, 90, 150}},
    .entryText{{130, 205, 140}, {232, 172, 104}, {146, 184, 236}},
    .track{245, 128, 112},
    .wind{110, 156, 222},
    .path{110, 160, 235},
    .changeover{214, 140, 64},
    .changeoverText{230, 166, 96},
};

const ColourScheme& Colours() { return App().night ? kNightColours : kDayColours; }

QPalette DayPalette() {
  // The system's palette, but selected text in black: white on the Fusion blue is 3.7:1.
  QPalette p;
  for (const auto group : {QPalette::Active, QPalette::Inactive})
    p.setColor(group, QPalette::HighlightedText, Qt::black);
  return p;
}

QPalette NightPalette() {
  const QColor window(40, 42, 47), base(20, 22, 25), button(36, 39, 44), text(196, 198, 192);
  const QColor faint(104, 107, 112);  // disabled texts: visible, clearly out of use
  QPalette p(button, window);
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const bool off = group == QPalette::Disabled;
    p.setColor(group, QPalette::Window, window);
    p.setColor(group, QPalette::Base, off ? window : base);
    p.setColor(group, QPalette::AlternateBase, QColor(28, 30, 34));
    p.setColor(group, QPalette::Button, button);
    p.setColor(group, QPalette::Light, QColor(66, 69, 75));
    p.setColor(group, QPalette::Midlight, QColor(54, 57, 62));
    p.setColor(group, QPalette::Mid, QColor(42, 44, 48));
    p.setColor(group, QPalette::Dark, QColor(20, 21, 23));
    p.setColor(group, QPalette::Shadow, QColor(8, 8, 9));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
      p.setColor(group, role, off ? faint : text);
    p.setColor(group, QPalette::BrightText, QColor(255, 128, 116));
    p.setColor(group, QPalette::PlaceholderText, faint);
    p.setColor(group, QPalette::Highlight, off ? QColor(52, 56, 62) : QColor(58, 86, 124));
    p.setColor(group, QPalette::HighlightedText, off ? faint : QColor(225, 226, 220));
    p.setColor(group, QPalette::ToolTipBase, QColor(52, 55, 60));
    p.setColor(group, QPalette::Link, QColor(120, 165, 220));
    p.setColor(group, QPalette::LinkVisited, QColor(160, 140, 210));
  }
  return p;
}

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

OpenFileResult OpenFileDialog(QWidget* parent, const QString& title, const QString& initialDir, const QString& filter) {
  const QString path = QFileDialog::getOpenFileName(parent, title, initialDir, filter, nullptr, QFileDialog::ReadOnly);
  if (path.isEmpty() || !QFileInfo(path).isFile()) return {};
  return {QFileInfo(path).fileName(), path};
}

char16_t LocaleDecimalSep() { return DecimalSepFromText(QLocale::system().toString(0.5).toStdU16String()); }

void ShowLocaleTexts(std::initializer_list<QLabel*> labels, std::initializer_list<std::string> texts) {
  Q_ASSERT(labels.size() == texts.size());
  auto text = texts.begin();
  for (QLabel* label : labels) label->setText(LocaleText(*text++));
}

QPushButton* MakeButton(QWidget* parent, const QString& text, const QString& name, const QString& toolTip) {
  auto* b = new QPushButton(text, parent);
  b->setObjectName(name);
  if (!toolTip.isEmpty()) b->setToolTip(toolTip);
  b->setAutoDefault(false);
  return b;
}

QScrollBar* MakeValueScrollBar(QWidget* parent, const QString& name, int min, int max, int pageStep, int minWidth) {
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
    if (anchor.left() - frame.width() >= area.left())
      at = QPoint(anchor.left() - frame.width(), anchor.top());
    else
      at = QPoint(anchor.left(), anchor.top() + anchor.height());  // below
  }
  return ClampOnto(at, frame, area);
}

}  // namespace norvane
