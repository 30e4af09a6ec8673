// The "Sunrise and sunset" screen's wiring: the options, the offset bar and the date recalculate,
// edits clear, the import and the Options' offset. The times themselves are in SunTimesTest.
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>

#include "sun/SunScreen.hpp"
#include "sun/SunTimes.hpp"
#include "support/UiTest.hpp"
#include "waypoints/ImportDialog.hpp"
#include "waypoints/NavDBShell.hpp"

using namespace norvane;
using namespace norvane::test;
using SunScreenUi = UiFixture;

namespace {
// What the model gives at 0 N for the screen's settings: sunrise, sunset, dawn, dusk, message.
std::vector<std::string> Expected(double lon, QDate d, bool lt = false, int offsetMinutes = 0, int twilight = 0) {
  const SunQuery q{0, lon, int16_t(d.day()), int16_t(d.month()), int16_t(d.year()), lt, offsetMinutes, twilight};
  const SunTexts t = CalculateSunTimes(q);
  return {t.sunrise, t.sunset, t.dawn, t.dusk, t.message};
}
// What the screen shows, in the same order.
std::vector<std::string> Shown(QWidget& s) {
  std::vector<std::string> v = Texts(s, "DataR", 4);
  v.push_back(Text(s, "lblError").toStdString());
  return v;
}
}  // namespace

TEST_F(SunScreenUi, OptionsBarAndDateRecalculateEditsClear) {
  App().settings.LTOffset = -3;
  SunScreen s;
  auto* bar = Find<QScrollBar>(s, "LTOff");
  EXPECT_EQ(Find<QDateEdit>(s, "DTPicker")->date(), QDate::currentDate());
  EXPECT_EQ(bar->value(), -3);  // the Options' offset
  Show(s);
  const QDate march(2009, 3, 21);
  Find<QDateEdit>(s, "DTPicker")->setDate(march);
  Type(s, 0, "0");
  EXPECT_FALSE(CanCalculate(s));
  Type(s, 2, "0");
  Calculate(s);  // the minutes may stay empty
  EXPECT_EQ(Shown(s), Expected(0, march));

  auto* tw = Find<QComboBox>(s, "TWCombo");
  tw->setFocus();
  QTest::keyClick(tw, Qt::Key_Down);
  EXPECT_EQ(Shown(s), Expected(0, march, false, 0, 1));
  bar->setFocus();
  QTest::keyClick(bar, Qt::Key_Right);  // in UTC the bar changes its label only
  EXPECT_TRUE(Text(s, "LTOffsetLbl").endsWith("-2"));
  EXPECT_EQ(Shown(s), Expected(0, march, false, 0, 1));
  Click(s, "TTOpt1");
  EXPECT_EQ(Shown(s), Expected(0, march, true, -120, 1));
  QTest::keyClick(bar, Qt::Key_Left);
  EXPECT_EQ(Shown(s), Expected(0, march, true, -180, 1));
  Click(s, "TTOpt0");
  auto* date = Find<QDateEdit>(s, "DTPicker");
  date->setFocus();
  date->setCurrentSection(QDateTimeEdit::MonthSection);
  QTest::keyClick(date, Qt::Key_Up);
  EXPECT_EQ(Shown(s), Expected(0, QDate(2009, 4, 21), false, 0, 1));

  Type(s, 2, "170");  // any edit clears and stops the live updates
  EXPECT_EQ(Shown(s), std::vector<std::string>(5));
  date->setDate(march);
  EXPECT_EQ(Text(s, "DataR0"), "");
  Calculate(s);
  EXPECT_EQ(Shown(s), Expected(170, march, false, 0, 1));
  Click(s, "OptLng1");
  EXPECT_EQ(Shown(s), Expected(-170, march, false, 0, 1));

  Type(s, 0, "78");  // permanent day: "None", and no live updates armed
  date->setDate(QDate(2009, 6, 21));
  Calculate(s);
  EXPECT_EQ(Text(s, "lblError"), "Permanent day/night");
  date->setDate(QDate(2009, 9, 21));
  EXPECT_EQ(Shown(s), std::vector<std::string>(5));
}

// How the import button waits for a database is NavigationUi.ImportButtonsWaitForADatabase's.
TEST_F(SunScreenUi, ImportTakesAWaypointOnceADatabaseIsChosen) {
  InstallNavDBHooks();
  ActiveNavDB().Clear();
  SunScreen s;
  Show(s);
  QApplication::setActiveWindow(&s);
  EXPECT_FALSE(Find<QPushButton>(s, "cmdImportInitial")->isEnabled());  // until a database is chosen
  ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));
  QEvent activate(QEvent::WindowActivate);  // back from the menu where it was chosen
  QApplication::sendEvent(&s, &activate);
  QTimer::singleShot(0, [] {
    auto* d = qobject_cast<ImportDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(d);
    QTest::keyClicks(d->findChild<InputBox*>("inICAO"), "EGLL");
    QTest::mouseClick(d->findChild<QPushButton*>("cmdSearch"), Qt::LeftButton);
  });
  Click(s, "cmdImportInitial");
  QApplication::processEvents();
  // Heathrow, 51°28'14" N 0°27'43" W: whole degrees and minutes rounded to the nearest.
  EXPECT_EQ(Texts(s, "InBox", 4), (std::vector<std::string>{"51", "28", "0", "28"}));
  EXPECT_TRUE(Checked(s, "OptLng1"));
}

TEST_F(SunScreenUi, TabReachesEveryControlWhicheverOptionIsChecked) {
  InstallNavDBHooks();
  ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));  // the import button takes part only then
  SunScreen s;
  Show(s);
  QApplication::setActiveWindow(&s);
  for (const char* option : {"OptLat1", "OptLng1", "TTOpt1"}) Click(s, option);
  for (int i = 0; i < 4; ++i) Type(s, i, "1");  // Calculate armed, so Tab reaches it
  Box(s, 0)->setFocus();
  QStringList order;
  for (int i = 0; i < 20; ++i) {  // the date field takes one Tab per section
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (order.isEmpty() || order.back() != QApplication::focusWidget()->objectName())
      order << QApplication::focusWidget()->objectName();
  }
  const QStringList expected{"InBox1",   "OptLat1", "InBox2", "InBox3",  "OptLng1",     "cmdImportInitial",
                             "DTPicker", "TTOpt1",  "LTOff",  "TWCombo", "cmdCalculate"};
  EXPECT_EQ(order.mid(0, expected.size()), expected);
}

// A time zone gives the offset of the date with its daylight saving (St John's: -3:30 in January,
// -2:30 in July), follows the date, and an unknown name is an error rather than UTC.
TEST_F(SunScreenUi, ZoneOffsetFollowsTheDate) {
  SunScreen s;
  Show(s);
  Type(s, 0, "0");
  Type(s, 2, "52");
  Click(s, "OptLng1");
  auto* date = Find<QDateEdit>(s, "DTPicker");
  date->setDate(QDate(2026, 1, 15));
  Click(s, "TTOpt2");
  auto* zone = Find<QComboBox>(s, "TZCombo");
  zone->setFocus();
  zone->lineEdit()->selectAll();
  QTest::keyClicks(zone, "America/St_Johns");
  Calculate(s);
  EXPECT_EQ(Text(s, "TZOffsetLbl"), "UTC-3:30 on this date");
  EXPECT_EQ(Shown(s), Expected(-52, QDate(2026, 1, 15), true, -210));
  date->setDate(QDate(2026, 7, 15));
  EXPECT_EQ(Text(s, "TZOffsetLbl"), "UTC-2:30 on this date");
  EXPECT_EQ(Shown(s), Expected(-52, QDate(2026, 7, 15), true, -150));
  QTest::keyClicks(zone, "x");
  EXPECT_EQ(Text(s, "lblError"), "Unknown time zone");
}
