// The four navigation screens driven like a user: import through the search dialog, calculate,
// switch units and true / magnetic tracks.
#include <QApplication>
#include <QDateEdit>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "app/MainMenu.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/TextFormat.hpp"
#include "navigation/IntersectionScreen.hpp"
#include "navigation/MagVarScreen.hpp"
#include "navigation/NavCalculations.hpp"
#include "navigation/PointScreen.hpp"
#include "navigation/TracksScreen.hpp"
#include "services/ImportDialog.hpp"
#include "services/NavDBShell.hpp"
#include "services/NavDatabase.hpp"

using namespace norvane;

namespace {

struct NavigationUi : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
    InstallNavDBHooks();
    ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));
  }
};

template <typename T = QWidget>
T* Child(QWidget* w, const QString& name) {
  T* c = w->findChild<T*>(name);
  EXPECT_NE(c, nullptr) << name.toStdString();
  return c;
}

QString Text(QWidget* w, const QString& name) {
  if (auto* l = w->findChild<QLabel*>(name)) return l->text();
  if (auto* b = w->findChild<InputBox*>(name)) return b->text();
  ADD_FAILURE() << "no " << name.toStdString();
  return {};
}

// Clicks a control; option buttons on their indicator (a stretched option's centre may be blank).
void Click(QWidget* w, const QString& name) {
  QWidget* c = Child<QWidget>(w, name);
  if (qobject_cast<QRadioButton*>(c)) QTest::mouseClick(c, Qt::LeftButton, {}, QPoint(8, c->height() / 2));
  else QTest::mouseClick(c, Qt::LeftButton);
}

// Clicks an import button and answers the search dialog it opens: types `ident`, searches, and
// when several lines are listed picks line `row`.
bool ImportVia(QWidget* screen, const QString& button, const char* ident, int row = -1) {
  bool dialogSeen = false;
  QTimer::singleShot(0, [&] {
    auto* d = qobject_cast<ImportDialog*>(QApplication::activeModalWidget());
    if (!d) return;
    dialogSeen = true;
    QTest::keyClicks(d->findChild<InputBox*>("inICAO"), ident);
    QTest::mouseClick(d->findChild<QPushButton*>("cmdSearch"), Qt::LeftButton);
    if (row >= 0 && d->isVisible()) {
      auto* list = d->findChild<QListWidget*>("ListICAO");
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
      QTest::mouseClick(d->findChild<QPushButton*>("cmdSelect"), Qt::LeftButton);
    }
  });
  Click(screen, button);
  QApplication::processEvents();
  return dialogSeen;
}

QStringList Boxes(QWidget* w, int from, int count) {
  QStringList l;
  for (int i = from; i < from + count; ++i) l << Text(w, QStringLiteral("InBox%1").arg(i));
  return l;
}

bool Checked(QWidget* w, const QString& name) { return Child<QRadioButton>(w, name)->isChecked(); }

}  // namespace

TEST_F(NavigationUi, TracksImportCalculateSwitchUnitsAndMagnetic) {
  ScreenRegistry registry;
  RegisterNavigationScreens(registry);
  QWidget* s = registry.create(7);
  s->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(s));
  QApplication::setActiveWindow(s);
  EXPECT_EQ(s->objectName(), "frmData7");
  EXPECT_FALSE(Child<QPushButton>(s, "cmdCalculate")->isEnabled());

  // One match: EGLL, 51.4706 N 0.461941 W, to a tenth of a second.
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "EGLL"));
  EXPECT_EQ(Boxes(s, 0, 6), (QStringList{"51", "28", "14.2", "0", "27", "43"}));
  EXPECT_TRUE(Checked(s, "OptLato0"));
  EXPECT_TRUE(Checked(s, "OptLngo1"));
  // Several matches: LAM, the second line is Lambourne (51.646099 N 0.151667 E).
  ASSERT_TRUE(ImportVia(s, "cmdImportFinal", "LAM", 1));
  EXPECT_EQ(Boxes(s, 6, 6), (QStringList{"51", "38", "46", "0", "9", "6"}));
  EXPECT_TRUE(Checked(s, "OptLatd0"));
  EXPECT_TRUE(Checked(s, "OptLngd0"));

  auto* calc = Child<QPushButton>(s, "cmdCalculate");
  ASSERT_TRUE(calc->isEnabled());
  QTest::mouseClick(calc, Qt::LeftButton);
  const double lat1 = 51 + 28 / 60.0 + 14.2 / 3600, lon1 = -(27 / 60.0 + 43 / 3600.0);
  const double lat2 = 51 + 38 / 60.0 + 46 / 3600.0, lon2 = 9 / 60.0 + 6 / 3600.0;
  const TracksResult t = ComputeTracks(lat1, lon1, lat2, lon2, nullptr);
  const auto nm = TracksTexts(t, DistanceUnit::Nm);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(Text(s, QStringLiteral("DataR%1").arg(i)).toStdString(), nm[size_t(i)]) << i;
  EXPECT_EQ(nm[0], "25.28");  // 46.82 km by GeodSolve

  // The unit switch re-displays the distances only.
  Click(s, "OptDist1");
  const auto km = TracksTexts(t, DistanceUnit::Km);
  EXPECT_EQ(Text(s, "DataR0").toStdString(), km[0]);
  EXPECT_EQ(Text(s, "DataR3").toStdString(), km[3]);
  EXPECT_EQ(Text(s, "DataR1").toStdString(), nm[1]);
  Click(s, "OptDist3");
  EXPECT_EQ(Text(s, "DataR6").toStdString(), TracksTexts(t, DistanceUnit::Ft)[6]);

  // Magnetic: recalculated at once with the default year's variation at each end.
  Click(s, "OptTRK1");
  const MagSettings igrf2005{2005, MagModel::IGRF10};
  const auto mag = TracksTexts(ComputeTracks(lat1, lon1, lat2, lon2, &igrf2005), DistanceUnit::Ft);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(Text(s, QStringLiteral("DataR%1").arg(i)).toStdString(), mag[size_t(i)]) << i;
  EXPECT_NE(mag[1], nm[1]);
  Click(s, "OptTRK0");
  EXPECT_TRUE(Checked(s, "OptTRK0"));
  EXPECT_FALSE(Checked(s, "OptTRK1"));
  EXPECT_EQ(Text(s, "DataR1").toStdString(), nm[1]) << mag[1];

  // Typing clears every result at once.
  auto* box = Child<InputBox>(s, "InBox2");
  box->setFocus();
  QTest::keyClicks(box, "1");
  for (int i = 0; i < 9; ++i) EXPECT_TRUE(Text(s, QStringLiteral("DataR%1").arg(i)).isEmpty()) << i;
  s->close();
}

// An oceanic fix on the 180th meridian and one at the pole imported as red, unusable boxes.
TEST_F(NavigationUi, FixesOnTheAntimeridianAndThePoleImportAsUsableBoxes) {
  QTemporaryDir dir;
  const std::string path = dir.filePath("ocean.dat").toStdString();
  const auto fix = [](const char* id, int lat) {
    return MakeRecord(WaypointType::Intersection, IdentCode(id), lat * 36000, -180 * 36000, 0);
  };
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB({fix("NPOLE", 90), fix("OCEAN", -30)}, 1)), "");
  ASSERT_TRUE(Hooks().openDatabase(path));
  TracksScreen s;
  s.show();
  ASSERT_TRUE(ImportVia(&s, "cmdImportInitial", "OCEAN") && ImportVia(&s, "cmdImportFinal", "NPOLE"));
  EXPECT_EQ(Boxes(&s, 0, 12), (QStringList{"30", "0", "0", "179", "59", "59.9", "89", "59", "59.9", "179", "59", "59.9"}));
  Click(&s, "cmdCalculate");
  EXPECT_EQ(Text(&s, "DataR7"), "360.0");  // due north along one meridian on the sphere
}

TEST_F(NavigationUi, ImportWithoutDatabaseSaysSoInsteadOfOpeningTheDialog) {
  ActiveNavDB().Clear();
  TracksScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QApplication::setActiveWindow(&s);  // focus selects a box's text, as for a user
  EXPECT_FALSE(ImportVia(&s, "cmdImportInitial", "EGLL"));
  EXPECT_EQ(Text(&s, "lblError"), "No active Waypoint Database");
  EXPECT_EQ(Text(&s, "InBox0"), "");
}

TEST_F(NavigationUi, PointFromTrackDistanceMagneticAndUnits) {
  PointScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QApplication::setActiveWindow(&s);  // focus selects a box's text, as for a user
  ASSERT_TRUE(ImportVia(&s, "cmdImportInitial", "EGLL"));
  auto* track = Child<InputBox>(&s, "InBox6");
  auto* distance = Child<InputBox>(&s, "InBox7");
  auto* variation = Child<InputBox>(&s, "InBox8");
  track->setFocus();
  QTest::keyClicks(track, "90");
  distance->setFocus();
  QTest::keyClicks(distance, "100");
  Click(&s, "Optmodel0");  // GC
  Click(&s, "OptTRK1");    // magnetic, variation left blank
  Click(&s, "cmdCalculate");
  const double lat = 51 + 28 / 60.0 + 14.2 / 3600, lon = -(27 / 60.0 + 43 / 3600.0);
  const MagSettings igrf2005{2005, MagModel::IGRF10};
  const PointResult r = ComputePointFromTrack(lat, lon, 90, 100, false, &igrf2005, std::nullopt);
  EXPECT_EQ(variation->text(), "-2.6");  // computed at the origin and written into its box
  EXPECT_EQ(Text(&s, "lblModel"), "(IGRF-10, 2005)");  // named with its year, as the Options screen
  App().settings = ParseSettings("[Options]\nDefMVModel=3\nDefMVYear=2028\n");  // chose since
  EXPECT_EQ(Text(&s, "dataR0").toStdString(), FormatLatLong(r.point.lat, false));
  EXPECT_EQ(Text(&s, "dataR1").toStdString(), FormatLatLong(r.point.lon, true));

  const QString first = Text(&s, "dataR1");
  Click(&s, "cmdCalculate");  // reads "-2.6" back: the same point (was 1.6 NM away)
  EXPECT_EQ(Text(&s, "dataR1"), first);

  // km: the distance is converted, the point recomputed at once with the variation in the box.
  Click(&s, "OptDist1");
  EXPECT_EQ(distance->text(), "185.2");
  const PointResult k = ComputePointFromTrack(lat, lon, 90, 100, false, &igrf2005, -2.6);
  EXPECT_EQ(Text(&s, "dataR1").toStdString(), FormatLatLong(k.point.lon, true));
  EXPECT_EQ(Text(&s, "lblModel"), "(IGRF-14, 2028)");
  // The distance limit follows the unit, 5400 NM but 10000 in metres: clamped into it.
  Click(&s, "OptDist2");
  EXPECT_EQ(distance->text(), "10000");
  EXPECT_EQ(distance->toolTip(), "Distance from origin (up to 10000 m)");
  // The import named the waypoint; a hemisphere flip or an edit of its boxes takes the name away.
  EXPECT_EQ(Text(&s, "lblImportInitial"), "EGLL airport");
  // A computed variation belongs to its place (a new result used London's once the point moved);
  // a typed one stays.
  Click(&s, "OptLngo0");
  Click(&s, "cmdCalculate");
  EXPECT_EQ(variation->text().toStdString(), FormatMask(ShownVariation(lat, -lon, MagSettings{2028, MagModel::IGRF14}), "0.0"));
  variation->setFocus();
  variation->selectAll();
  QTest::keyClicks(variation, "-3");
  Child<InputBox>(&s, "InBox0")->setFocus();
  QTest::keyClicks(Child<InputBox>(&s, "InBox0"), "50");
  EXPECT_EQ(variation->text(), "-3");
  EXPECT_EQ(Text(&s, "lblImportInitial"), "");
}

TEST_F(NavigationUi, RadialIntersectionFromTwoImportedPoints) {
  IntersectionScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QApplication::setActiveWindow(&s);  // focus selects a box's text, as for a user
  ASSERT_TRUE(ImportVia(&s, "cmdImportInitial", "LAX"));  // Los Angeles VORTAC
  ASSERT_TRUE(ImportVia(&s, "cmdImportFinal", "LAS"));    // Las Vegas VORTAC
  auto* t1 = Child<InputBox>(&s, "InBox6");
  auto* t2 = Child<InputBox>(&s, "InBox14");
  t1->setFocus();
  QTest::keyClicks(t1, "45");
  t2->setFocus();
  QTest::keyClicks(t2, "225");  // back along the line: both radials on it
  Click(&s, "cmdCalculate");
  EXPECT_EQ(Text(&s, "dataR0"), "Not calculable");
  EXPECT_EQ(Text(&s, "dataR1"), "Not calculable");
  t2->selectAll();
  QTest::keyClicks(t2, "270");
  Click(&s, "cmdCalculate");
  EXPECT_EQ(Text(&s, "dataR0").left(1), "N");
  EXPECT_EQ(Text(&s, "dataR1").left(1), "W");
  // Magnetic with blank variations: both are computed and written into their boxes.
  Click(&s, "OptTRK1");
  EXPECT_FALSE(Text(&s, "InBox7").isEmpty());
  EXPECT_FALSE(Text(&s, "InBox15").isEmpty());
  EXPECT_EQ(Text(&s, "dataR0").left(1), "N");
}

TEST_F(NavigationUi, MagneticVariationImportsRoundedMinutesAndFollowsModelAndDate) {
  MagVarScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QApplication::setActiveWindow(&s);  // focus selects a box's text, as for a user
  ASSERT_TRUE(ImportVia(&s, "cmdImportInitial", "EGLL"));
  // 51°28'14.2" and 0°27'43": minutes rounded without a seconds box.
  EXPECT_EQ(Boxes(&s, 0, 4), (QStringList{"51", "28", "0", "28"}));
  EXPECT_TRUE(Checked(&s, "OptLng1"));
  Child<QDateEdit>(&s, "DTPicker")->setDate(QDate(2007, 1, 1));
  Click(&s, "OptModel0");  // WMM2005
  EXPECT_EQ(s.windowTitle(), "Magnetic variation - WMM2005");
  Click(&s, "cmdCalculate");
  const double lat = (51 + 28 / 60.0) * kDegToRad, lon = -(28 / 60.0) * kDegToRad;
  EXPECT_EQ(Text(&s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2007, 1, 1}, MagModel::WMM2005)));
  // Model and date changes recalculate at once.
  Click(&s, "OptModel1");
  EXPECT_EQ(s.windowTitle(), "Magnetic variation - IGRF-10");
  EXPECT_EQ(Text(&s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2007, 1, 1}, MagModel::IGRF10)));
  Child<QDateEdit>(&s, "DTPicker")->setDate(QDate(2004, 6, 1));  // before the epoch: the 2005.0 field
  EXPECT_EQ(Text(&s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2005, 1, 1}, MagModel::IGRF10)));
  EXPECT_EQ(Text(&s, "lblNotice").toStdString(), MagValidityNotice(MagModel::IGRF10, {2004, 6, 1}));
  Click(&s, "OptModel3");
  Child<QDateEdit>(&s, "DTPicker")->setDate(QDate(2026, 6, 1));
  EXPECT_EQ(s.windowTitle(), "Magnetic variation - IGRF-14");
  EXPECT_EQ(Text(&s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2026, 6, 1}, MagModel::IGRF14)));
  EXPECT_TRUE(Text(&s, "lblNotice").isEmpty());
  auto* alt = Child<InputBox>(&s, "InBox4");
  alt->setFocus();
  alt->selectAll();
  QTest::keyClicks(alt, "65001");
  EXPECT_FALSE(Child<QPushButton>(&s, "cmdCalculate")->isEnabled());
  EXPECT_TRUE(Text(&s, "lblMV").isEmpty());
  s.clearResetData();
  EXPECT_EQ(Boxes(&s, 0, 5), (QStringList{"", "", "", "", "0"}));
}

TEST_F(NavigationUi, MenuShowsTheDatabaseAndLocksItWhileANavigationScreenIsOpen) {
  ActiveNavDB().Clear();
  ScreenRegistry registry;
  RegisterNavigationScreens(registry);
  MainMenu menu(registry);
  menu.timer()->stop();
  // Start-up: the path from the settings is checked; the first tick loads it and names it.
  App().settings.DBPath = NORVANE_SAMPLE_DB;
  ASSERT_TRUE(Hooks().checkDatabase(App().settings.DBPath));
  menu.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  menu.firstTick();
  EXPECT_EQ(menu.labelDB()->text(), "sample (0001)");
  EXPECT_TRUE(NavDBActive());
  for (int k : {7, 8, 9, 10}) {
    menu.chooseItem(k);
    EXPECT_EQ(menu.currentForm(), k);
    EXPECT_FALSE(menu.labelDB()->isEnabled()) << k;
  }
  menu.openScreen()->close();
  EXPECT_TRUE(menu.labelDB()->isEnabled());
  EXPECT_EQ(App().settings.DBPath, NORVANE_SAMPLE_DB);
}

// The load once waited for the timer's first interval after the menu was already on screen.
TEST_F(NavigationUi, MenuLoadsTheDatabaseOnceItIsPaintedUnlessItsTimerIsStopped) {
  ScreenRegistry registry;
  RegisterNavigationScreens(registry);
  for (const bool stopped : {false, true}) {
    ActiveNavDB().Clear();
    MainMenu menu(registry);
    menu.timer()->setInterval(3'600'000);  // no tick from the timer during the test
    if (stopped) menu.timer()->stop();
    App().settings.DBPath = NORVANE_SAMPLE_DB;
    ASSERT_TRUE(Hooks().checkDatabase(App().settings.DBPath));
    bool finished = false;
    QObject::connect(&menu, &MainMenu::firstTickFinished, [&] { finished = true; });
    menu.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
    if (stopped) {
      QTest::qWait(50);
      EXPECT_FALSE(finished);
      EXPECT_FALSE(NavDBActive());
    } else {
      EXPECT_TRUE(QTest::qWaitFor([&] { return finished; }, 5000));
      EXPECT_EQ(menu.labelDB()->text(), "sample (0001)");
    }
  }
}

TEST_F(NavigationUi, MenuReportsAFailedDatabaseOnTheFirstTick) {
  ScreenRegistry registry;
  RegisterNavigationScreens(registry);
  MainMenu menu(registry);
  menu.timer()->stop();
  App().settings.DBPath = NORVANE_SOURCE_DIR "/data/waypoints/README.md";
  EXPECT_FALSE(Hooks().checkDatabase(App().settings.DBPath));
  menu.firstTick();
  EXPECT_EQ(menu.labelDB()->text(), "No waypoint DB");
  EXPECT_TRUE(App().settings.DBPath.empty());
  EXPECT_FALSE(NavDBActive());
}
