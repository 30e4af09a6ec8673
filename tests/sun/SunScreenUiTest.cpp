// The "Sunrise and sunset" screen driven with real key and mouse events.
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "services/ImportDialog.hpp"
#include "services/NavDBShell.hpp"
#include "sun/SunScreen.hpp"

using namespace norvane;

inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

namespace {

struct SunScreenUi : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
  }

  // Opens the screen with 21 March 2009 in the date picker.
  void open() {
    screen = std::make_unique<SunScreen>();
    screen->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(screen.get()));
    date()->setDate(QDate(2009, 3, 21));
  }
  template <typename T>
  T* w(const char* name) const {
    T* p = screen->findChild<T*>(name);
    EXPECT_NE(p, nullptr) << name;
    return p;
  }
  InputBox* box(int i) const { return w<InputBox>(qPrintable(QStringLiteral("InBox%1").arg(i))); }
  QDateEdit* date() const { return w<QDateEdit>("DTPicker"); }
  QString result(int i) const { return w<QLabel>(qPrintable(QStringLiteral("DataR%1").arg(i)))->text(); }
  QStringList results() const { return {result(0), result(1), result(2), result(3)}; }
  QString message() const { return w<QLabel>("lblError")->text(); }
  void type(int i, const char* text) {
    box(i)->setFocus();
    box(i)->selectAll();  // typing replaces, as after the select-all of a focus change
    QTest::keyClicks(box(i), text);
  }
  // A click on the button's indicator (a radio button takes clicks on its indicator and text only).
  void click(const char* name) {
    auto* b = w<QAbstractButton>(name);
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(8, b->height() / 2));
  }

  std::unique_ptr<SunScreen> screen;
};

}  // namespace

TEST_F(SunScreenUi, EmptyMinutesCountAsZeroAndResultsFollowTheOptions) {
  open();
  auto* calc = w<QPushButton>("cmdCalculate");
  EXPECT_FALSE(calc->isEnabled());  // the degree boxes start empty
  type(0, "0");
  EXPECT_FALSE(calc->isEnabled());
  type(2, "0");
  ASSERT_TRUE(calc->isEnabled());  // minutes may stay empty
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(results(), (QStringList{"06:04", "18:10", "05:43", "18:31"}));
  EXPECT_EQ(message(), "");
  EXPECT_EQ(w<QGroupBox>("FrameResults")->title(), "Sunrise/Sunset (UTC)");
  EXPECT_EQ(w<QGroupBox>("FrameTwilight")->title(), "Twilight (UTC)");

  // Twilight kind: recomputed at once (astronomical: 04:55 / 19:19 by PyEphem as well).
  auto* tw = w<QComboBox>("TWCombo");
  tw->setFocus();
  QTest::keyClick(tw, Qt::Key_Down);
  QTest::keyClick(tw, Qt::Key_Down);
  EXPECT_EQ(tw->currentText(), "Astronomical time");
  EXPECT_EQ(results(), (QStringList{"06:04", "18:10", "04:55", "19:19"}));
  QTest::keyClick(tw, Qt::Key_Up);
  QTest::keyClick(tw, Qt::Key_Up);

  // The offset bar only changes its label while UTC is chosen.
  auto* bar = w<QScrollBar>("LTOff");
  bar->setFocus();
  QTest::keyClick(bar, Qt::Key_Right);
  QTest::keyClick(bar, Qt::Key_Right);
  EXPECT_EQ(bar->value(), 2);
  EXPECT_TRUE(w<QLabel>("LTOffsetLbl")->text().endsWith("+2"));
  EXPECT_EQ(result(0), "06:04");

  // Local time: captions and results follow, and then every move of the bar.
  click("TTOpt1");
  EXPECT_EQ(w<QGroupBox>("FrameResults")->title(), "Sunrise/Sunset (Local time)");
  EXPECT_EQ(w<QGroupBox>("FrameTwilight")->title(), "Twilight (Local time)");
  EXPECT_EQ(results(), (QStringList{"08:04", "20:10", "07:43", "20:31"}));
  bar->setFocus();
  QTest::keyClick(bar, Qt::Key_Left);
  EXPECT_EQ(results(), (QStringList{"07:04", "19:10", "06:43", "19:31"}));
  click("TTOpt0");
  EXPECT_EQ(results(), (QStringList{"06:04", "18:10", "05:43", "18:31"}));

  // The date: one month later by the keyboard, recomputed at once.
  date()->setFocus();
  date()->setCurrentSection(QDateTimeEdit::MonthSection);
  QTest::keyClick(date(), Qt::Key_Up);
  EXPECT_EQ(date()->date(), QDate(2009, 4, 21));
  EXPECT_EQ(results(), (QStringList{"05:55", "18:02", "05:34", "18:23"}));

  // Hemisphere: 170 E then 170 W, with the notices of the wrapped times.
  type(2, "170");
  EXPECT_EQ(results(), (QStringList{"", "", "", ""}));  // any edit clears and disarms the live updates
  date()->setDate(QDate(2009, 3, 21));
  EXPECT_EQ(result(0), "");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(result(0), "18:44");
  EXPECT_EQ(result(1), "06:51");
  EXPECT_EQ(message(), "Sunrise previous day");
  click("OptLng1");
  EXPECT_EQ(result(0), "17:24");
  EXPECT_EQ(result(1), "05:30");
  EXPECT_EQ(message(), "Sunset next day");
}

TEST_F(SunScreenUi, PermanentDayOrNightShowsNoneAndDoesNotArmLiveUpdates) {
  open();
  type(0, "78");
  type(2, "0");
  date()->setDate(QDate(2009, 6, 21));
  QTest::mouseClick(w<QPushButton>("cmdCalculate"), Qt::LeftButton);
  EXPECT_EQ(results(), (QStringList{"None", "None", "None", "None"}));
  EXPECT_EQ(message(), "Permanent day/night");
  EXPECT_FALSE(screen->calculated());
  // A new date is not computed, and the "None" of the old one does not stay on screen.
  date()->setDate(QDate(2009, 9, 21));
  EXPECT_EQ(results(), (QStringList{"", "", "", ""}));
  EXPECT_EQ(message(), "");
}

TEST_F(SunScreenUi, LoadsTodayTheOffsetSettingAndRangeChecksTheBoxes) {
  App().settings.LTOffset = -3;
  screen = std::make_unique<SunScreen>();
  EXPECT_EQ(w<QDateEdit>("DTPicker")->date(), QDate::currentDate());
  EXPECT_EQ(w<QScrollBar>("LTOff")->value(), -3);
  EXPECT_TRUE(w<QLabel>("LTOffsetLbl")->text().endsWith("-3"));
  EXPECT_EQ(w<QComboBox>("TWCombo")->currentIndex(), 0);
  EXPECT_TRUE(w<QRadioButton>("TTOpt0")->isChecked());

  screen->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(screen.get()));
  struct Row {
    int box;
    const char* text;
    bool valid;
  } rows[] = {{0, "89", true}, {0, "90", false}, {1, "59", true}, {1, "60", false}, {1, "", true},
              {2, "179", true}, {2, "180", false}, {3, "", true}, {0, "", false}};
  for (const Row& r : rows) {
    box(r.box)->selectAll();
    box(r.box)->setFocus();
    if (*r.text) QTest::keyClicks(box(r.box), r.text);
    else QTest::keyClick(box(r.box), Qt::Key_Delete);
    EXPECT_EQ(box(r.box)->isValid(), r.valid) << r.box << " " << r.text;
  }
  type(1, "-5x");  // unsigned whole numbers only
  EXPECT_EQ(box(1)->text(), "5");
}

TEST_F(SunScreenUi, ImportTakesAWaypointPositionWhileADatabaseIsActive) {
  InstallNavDBHooks();
  ActiveNavDB().Clear();
  open();
  QApplication::setActiveWindow(screen.get());
  bool dialogSeen = false;
  auto answerDialog = [&] {
    QTimer::singleShot(0, [&] {
      auto* d = qobject_cast<ImportDialog*>(QApplication::activeModalWidget());
      if (!d) return;
      dialogSeen = true;
      QTest::keyClicks(d->findChild<InputBox*>("inICAO"), "EGLL");
      QTest::mouseClick(d->findChild<QPushButton*>("cmdSearch"), Qt::LeftButton);
    });
    QTest::mouseClick(w<QPushButton>("cmdImportInitial"), Qt::LeftButton);
    QApplication::processEvents();
  };
  EXPECT_FALSE(w<QPushButton>("cmdImportInitial")->isEnabled());  // until a database is chosen
  answerDialog();
  EXPECT_FALSE(dialogSeen);

  ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));
  QEvent activate(QEvent::WindowActivate);  // back from the menu where it was chosen
  QApplication::sendEvent(screen.get(), &activate);
  answerDialog();
  EXPECT_TRUE(dialogSeen);
  // Heathrow, 51.4706 N 0.4619 W: whole degrees and minutes rounded to the nearest.
  EXPECT_EQ(box(0)->text(), "51");
  EXPECT_EQ(box(1)->text(), "28");
  EXPECT_EQ(box(2)->text(), "0");
  EXPECT_EQ(box(3)->text(), "28");
  EXPECT_TRUE(w<QRadioButton>("OptLat0")->isChecked());
  EXPECT_TRUE(w<QRadioButton>("OptLng1")->isChecked());
  QTest::mouseClick(w<QPushButton>("cmdCalculate"), Qt::LeftButton);
  EXPECT_EQ(result(0), "06:02");
}

TEST_F(SunScreenUi, TabReachesEveryControlWhicheverOptionIsChecked) {
  InstallNavDBHooks();
  ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));  // the import button takes part only then
  open();
  QApplication::setActiveWindow(screen.get());
  click("OptLat1");
  click("OptLng1");
  click("TTOpt1");
  for (int i = 0; i < 4; ++i) type(i, "1");  // Calculate armed, so Tab reaches it
  box(0)->setFocus();
  QStringList order;
  for (int i = 0; i < 20; ++i) {  // the date field takes one Tab per section
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    if (order.isEmpty() || order.back() != QApplication::focusWidget()->objectName())
      order << QApplication::focusWidget()->objectName();
  }
  const QStringList expected{"InBox1", "OptLat1", "InBox2", "InBox3", "OptLng1", "cmdImportInitial",
                             "DTPicker", "TTOpt1", "LTOff", "TWCombo", "cmdCalculate"};
  EXPECT_EQ(order.mid(0, expected.size()), expected);
}
