// Every text of the program readable by day and by night: the contrast between each text and its
// background, measured on the rendered pixels (WCAG 2: at least 4.5:1; disabled controls exempt).
#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QStyleOptionButton>
#include <QTabBar>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "app/AboutDialog.hpp"
#include "app/CalculatorScreen.hpp"
#include "app/MainMenu.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/UiHelpers.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

// The WCAG contrast ratio of two colours, from their relative luminances.
double Contrast(QRgb a, QRgb b) {
  const auto luminance = [](QRgb c) {
    double l = 0;
    for (const auto& [v, weight] : {std::pair{qRed(c), 0.2126}, {qGreen(c), 0.7152}, {qBlue(c), 0.0722}}) {
      const double s = v / 255.0;
      l += weight * (s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4));
    }
    return l;
  };
  const double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// Where widget w draws its text, in its own coordinates; empty when it shows none.
QRect TextArea(QWidget* w) {
  if (auto* l = qobject_cast<QLabel*>(w)) return l->text().isEmpty() ? QRect() : l->contentsRect();
  if (auto* b = qobject_cast<QAbstractButton*>(w)) {  // beside the indicator of option buttons and check boxes
    QStyleOptionButton o;
    o.initFrom(w);
    o.text = b->text();
    const auto e = qobject_cast<QRadioButton*>(w) ? QStyle::SE_RadioButtonContents
                   : qobject_cast<QCheckBox*>(w)  ? QStyle::SE_CheckBoxContents
                                                  : QStyle::SE_PushButtonContents;
    return o.text.isEmpty() ? QRect() : w->style()->subElementRect(e, &o, w);
  }
  if (auto* g = qobject_cast<QGroupBox*>(w))  // the title, above the frame
    return g->title().isEmpty()
               ? QRect()
               : QRect(0, 0, g->fontMetrics().horizontalAdvance(g->title()) + 12, g->fontMetrics().height());
  if (auto* a = qobject_cast<QAbstractScrollArea*>(w)) {  // text views and item lists
    auto* v = qobject_cast<QAbstractItemView*>(w);
    const bool shows = v ? v->model() && v->model()->rowCount() > 0 : !a->property("plainText").toString().isEmpty();
    return shows ? a->viewport()->geometry() : QRect();
  }
  const bool shows = qobject_cast<QLineEdit*>(w)   ? !static_cast<QLineEdit*>(w)->text().isEmpty()
                     : qobject_cast<QComboBox*>(w) ? !static_cast<QComboBox*>(w)->currentText().isEmpty()
                                                   : qobject_cast<QTabBar*>(w) != nullptr;
  return shows ? w->rect().adjusted(3, 3, -3, -3) : QRect();  // inside the frame
}

// The lowest contrast of the texts of window `top` and where it is, each failure reported. A
// text's background is the most frequent colour of its area, its colour the pixel of the highest
// contrast against it.
using Lowest = std::pair<double, std::string>;
Lowest LowestContrast(QWidget& top, const char* mode) {
  const QImage shot = top.grab().toImage().convertToFormat(QImage::Format_RGB32);
  Lowest lowest{21, ""};
  for (QWidget* w : top.findChildren<QWidget*>()) {
    if (!w->isVisibleTo(&top) || !w->isEnabled() || w->window() != &top) continue;
    const QRect local = TextArea(w);
    const QRect area = QRect(w->mapTo(&top, local.topLeft()), local.size()) & shot.rect();
    if (area.isEmpty()) continue;
    std::map<QRgb, int> count;
    for (int y = area.top(); y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x) ++count[shot.pixel(x, y)];
    const QRgb background =
        std::max_element(count.begin(), count.end(), [](auto& a, auto& b) { return a.second < b.second; })->first;
    double ratio = 1;
    for (const auto& [rgb, n] : count) ratio = std::max(ratio, Contrast(rgb, background));
    const std::string where =
        top.objectName().toStdString() + " " + w->metaObject()->className() + " " + w->objectName().toStdString();
    EXPECT_GE(ratio, 4.5) << mode << " " << where << " on #" << std::hex << background;
    lowest = std::min(lowest, Lowest{ratio, where});
  }
  return lowest;
}

}  // namespace

TEST_F(UiFixture, EveryTextIsReadableByDayAndByNight) {
  struct KeepHooks {  // the screens' registration installs the services' hooks: other tests run without
    ShellHooks saved = Hooks();
    ~KeepHooks() { Hooks() = saved; }
  } keep;
  ScreenRegistry registry;
  RegisterAllScreens(registry);
  for (const bool night : {false, true}) {
    const char* mode = night ? "night" : "day";
    UseColours(night);
    MainMenu menu(registry);
    menu.firstTick();
    Show(menu);
    Lowest lowest = LowestContrast(menu, mode);
    for (const auto& entry : registry.all()) {
      menu.chooseItem(entry.first);
      CalculatorScreen* screen = menu.openScreen();
      ASSERT_TRUE(screen && QTest::qWaitForWindowExposed(screen));
      screen->prepareScreenshot();
      lowest = std::min(lowest, LowestContrast(*screen, mode));
      screen->close();
    }
    AboutDialog about(&menu);
    Show(about);
    lowest = std::min(lowest, LowestContrast(about, mode));
    std::printf("lowest contrast by %s: %.2f (%s)\n", mode, lowest.first, lowest.second.c_str());
  }
}
