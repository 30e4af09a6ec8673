// The navigation screens' wiring: import through the search dialog, options that recalculate or
// re-display, the magnetic settings of the Options screen, the choices kept while the program runs,
// and the menu's database label. The values themselves are checked in the model tests.
#include <QApplication>
#include <QDateEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTimer>

#include "app/MainMenu.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/TextFormat.hpp"
#include "navigation/IntersectionScreen.hpp"
#include "navigation/MagVarScreen.hpp"
#include "navigation/NavCalculations.hpp"
#include "navigation/PointScreen.hpp"
#include "navigation/TracksScreen.hpp"
#include "support/UiTest.hpp"
#include "waypoints/ImportDialog.hpp"
#include "waypoints/NavDBShell.hpp"
#include "waypoints/NavDatabase.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

struct NavigationUi : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    InstallNavDBHooks();
    ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));
  }
};

// Clicks an import button and answers the search dialog: types `ident`, searches, and when
// several lines are listed picks line `row`. False when no dialog opened.
bool ImportVia(QWidget& screen, const QString& button, const char* ident, int row = -1) {
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

template <class S>
void Open(S& s) {
  Show(s);
  QApplication::setActiveWindow(&s);  // focus selects a box's text, as for a user
}

// EGLL, 51°28'14.2" N 0°27'43" W, as the import writes it into the boxes.
const double kEgllLat = 51 + 28 / 60.0 + 14.2 / 3600, kEgllLon = -(27 / 60.0 + 43 / 3600.0);

}  // namespace

// Options are kept per screen while the program runs; those whose default is a setting follow the
// Options screen until the user chooses.
TEST_F(NavigationUi, ChoicesKeptAndDefaultsThatFollowTheSettings) {
  App().settings.AutoMV = 1;
  {
    PointScreen p;
    IntersectionScreen i;
    MagVarScreen m;
    for (QWidget* w : std::initializer_list<QWidget*>{&p, &i, &m}) Show(*w);
    EXPECT_TRUE(Checked(p, "OptTRK1"));
    EXPECT_TRUE(Checked(i, "OptTRK1"));
    EXPECT_TRUE(Checked(m, "OptModel1"));  // IGRF-10, the settings' model
    Click(p, "OptTRK0");
    Click(p, "Optmodel0");
    Click(p, "OptDist2");
    for (QWidget* w : std::initializer_list<QWidget*>{&p, &i, &m}) w->close();  // as the user leaves them
  }
  PointScreen again;
  Show(again);
  EXPECT_TRUE(Checked(again, "OptTRK0"));
  EXPECT_TRUE(Checked(again, "Optmodel0"));
  EXPECT_TRUE(Checked(again, "OptDist2"));
  App().settings.AutoMV = 0;
  App().settings.DefMVModel = int(MagModel::WMM2025);
  {
    IntersectionScreen i;
    MagVarScreen m;
    Show(i);
    Show(m);
    EXPECT_TRUE(Checked(i, "OptTRK0"));
    EXPECT_TRUE(Checked(m, "OptModel2"));
    Click(m, "OptModel0");
    i.close();
    m.close();
  }
  App().settings.DefMVModel = int(MagModel::IGRF14);
  MagVarScreen m;
  Show(m);
  EXPECT_TRUE(Checked(m, "OptModel0"));
  {
    TracksScreen t;
    Show(t);
    Click(t, "OptDist3");
    t.close();
  }
  TracksScreen t;
  Show(t);
  EXPECT_TRUE(Checked(t, "OptDist3"));
}

TEST_F(NavigationUi, TracksImportCalculateUnitsAndMagneticSettings) {
  App().settings.DefMVYear = 2008;
  App().settings.DefMVModel = 1;
  TracksScreen s;
  Open(s);
  EXPECT_FALSE(CanCalculate(s));
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "EGLL"));  // one match
  EXPECT_EQ(Texts(s, "InBox", 6), (std::vector<std::string>{"51", "28", "14.2", "0", "27", "43"}));
  EXPECT_TRUE(Checked(s, "OptLngo1"));
  ASSERT_TRUE(ImportVia(s, "cmdImportFinal", "LAM", 1));  // the second of three: Lambourne
  EXPECT_EQ(Texts(s, "InBox", 6, 6), (std::vector<std::string>{"51", "38", "46", "0", "9", "6"}));
  EXPECT_TRUE(Checked(s, "OptLngd0"));
  Click(s, "OptTRK0");
  Calculate(s);
  const double lat2 = 51 + 38 / 60.0 + 46 / 3600.0, lon2 = 9 / 60.0 + 6 / 3600.0;
  const TracksResult t = ComputeTracks(kEgllLat, kEgllLon, lat2, lon2, nullptr);
  const auto shown = [&](const TracksResult& r, DistanceUnit u) {
    const auto a = TracksTexts(r, u);
    return std::vector<std::string>(a.begin(), a.end());
  };
  EXPECT_EQ(Texts(s, "DataR", 9), shown(t, DistanceUnit::Nm));
  Click(s, "OptDist1");  // re-displayed in km, nothing recomputed
  EXPECT_EQ(Texts(s, "DataR", 9), shown(t, DistanceUnit::Km));
  // Magnetic: recalculated at once with the Options' year and model at each end.
  Click(s, "OptTRK1");
  const MagSettings wmm2008{2008, MagModel::WMM2005};
  const TracksResult m = ComputeTracks(kEgllLat, kEgllLon, lat2, lon2, &wmm2008);
  EXPECT_EQ(Texts(s, "DataR", 9), shown(m, DistanceUnit::Km));
  Type(s, 2, "1");  // typing clears every result
  EXPECT_EQ(Texts(s, "DataR", 9), std::vector<std::string>(9));
}

// An oceanic fix on the 180th meridian and one at the pole import as the largest values the boxes take.
TEST_F(NavigationUi, FixesOnTheAntimeridianAndThePoleImportAsUsableBoxes) {
  QTemporaryDir dir;
  const std::string path = dir.filePath("ocean.dat").toStdString();
  const auto fix = [](const char* id, int lat) {
    return MakeRecord(WaypointType::Intersection, IdentCode(id), lat * 36000, -180 * 36000, 0);
  };
  ASSERT_EQ(WriteFileAtomically(path, SerializeNavDB({fix("NPOLE", 90), fix("OCEAN", -30)}, 1)), "");
  ASSERT_TRUE(Hooks().openDatabase(path));
  TracksScreen s;
  Open(s);
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "OCEAN") && ImportVia(s, "cmdImportFinal", "NPOLE"));
  Click(s, "OptTRK0");
  EXPECT_EQ(Texts(s, "InBox", 12),
            (std::vector<std::string>{"30", "0", "0", "179", "59", "59.9", "89", "59", "59.9", "179", "59", "59.9"}));
  Calculate(s);
  EXPECT_EQ(Text(s, "DataR7"), "360.0");  // due north along one meridian on the sphere
}

TEST_F(NavigationUi, ImportButtonsWaitForADatabase) {
  ActiveNavDB().Clear();
  PointScreen s;
  Open(s);
  EXPECT_FALSE(Find<QPushButton>(s, "cmdImportInitial")->isEnabled());
  EXPECT_FALSE(ImportVia(s, "cmdImportInitial", "EGLL"));
  ASSERT_TRUE(Hooks().openDatabase(NORVANE_SAMPLE_DB));  // chosen on the menu meanwhile
  QEvent activate(QEvent::WindowActivate);
  QApplication::sendEvent(&s, &activate);
  EXPECT_TRUE(ImportVia(s, "cmdImportInitial", "EGLL"));
}

TEST_F(NavigationUi, PointMagneticVariationAndUnitRange) {
  PointScreen s;
  Open(s);
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "EGLL"));
  EXPECT_EQ(Text(s, "lblImportInitial"), "EGLL airport");  // the import names the waypoint
  Click(s, "Optmodel0");
  Type(s, 6, "90");
  Type(s, 7, "100");
  Click(s, "OptTRK1");  // magnetic, variation left blank
  Calculate(s);
  const MagSettings igrf2005{2005, MagModel::IGRF10};
  const PointResult r = ComputePointFromTrack(kEgllLat, kEgllLon, 90, 100, false, &igrf2005, std::nullopt);
  EXPECT_EQ(Text(s, "InBox8"), "-2.6");  // computed at the origin and written into its box
  EXPECT_EQ(Text(s, "lblModel"), "(IGRF-10, 2005)");
  EXPECT_EQ(Text(s, "dataR1").toStdString(), FormatLatLong(r.point.lon, true));
  Calculate(s);  // reads "-2.6" back: the same point
  EXPECT_EQ(Text(s, "dataR1").toStdString(), FormatLatLong(r.point.lon, true));
  App().settings.DefMVModel = 3;  // chosen on the Options screen since
  App().settings.DefMVYear = 2028;
  Click(s, "OptDist1");  // km: the distance is converted, the point recomputed with the variation in the box
  EXPECT_EQ(Text(s, "InBox7"), "185.2");
  const PointResult k = ComputePointFromTrack(kEgllLat, kEgllLon, 90, 100, false, &igrf2005, -2.6);
  EXPECT_EQ(Text(s, "dataR1").toStdString(), FormatLatLong(k.point.lon, true));
  EXPECT_EQ(Text(s, "lblModel"), "(IGRF-14, 2028)");
  Click(s, "OptDist2");  // 5400 NM, but at most 10000 in metres: clamped into it
  EXPECT_EQ(Text(s, "InBox7"), "10000");
  EXPECT_TRUE(CanCalculate(s));
  // A computed variation belongs to its place; a typed one stays. An edit takes the import's name away.
  Click(s, "OptLngo0");
  Calculate(s);
  EXPECT_EQ(Text(s, "InBox8").toStdString(),
            FormatMask(ShownVariation(kEgllLat, -kEgllLon, MagSettings{2028, MagModel::IGRF14}), "0.0"));
  Type(s, 8, "-3");
  Type(s, 0, "50");
  EXPECT_EQ(Text(s, "InBox8"), "-3");
  EXPECT_EQ(Text(s, "lblImportInitial"), "");
}

TEST_F(NavigationUi, IntersectionNotCalculableAndBothVariationsWritten) {
  IntersectionScreen s;
  Open(s);
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "LAX"));
  ASSERT_TRUE(ImportVia(s, "cmdImportFinal", "LAS"));
  Click(s, "OptTRK0");
  Type(s, 6, "45");
  Type(s, 14, "225");  // back along the line: both radials on it
  Calculate(s);
  EXPECT_EQ(Texts(s, "dataR", 2), (std::vector<std::string>{"Not calculable", "Not calculable"}));
  Type(s, 14, "270");
  Calculate(s);
  const auto degrees = [&](int first) {
    const auto v = [&](int i) { return Box(s, first + i)->value(); };
    return std::pair{v(0) + v(1) / 60 + v(2) / 3600, -(v(3) + v(4) / 60 + v(5) / 3600)};
  };
  const auto [lat1, lon1] = degrees(0);
  const auto [lat2, lon2] = degrees(8);
  const GeoPoint p = RadialIntersection(lat1, lon1, 45, lat2, lon2, 270);
  EXPECT_EQ(Text(s, "dataR0").toStdString(), IntersectionText(p.lat, false));
  // Magnetic with blank variations: each is computed at its own point and written into its box.
  Click(s, "OptTRK1");
  const double v1 = TrackMagVar(lat1, lon1, 2005, MagModel::IGRF10),
               v2 = TrackMagVar(lat2, lon2, 2005, MagModel::IGRF10);
  EXPECT_EQ(Text(s, "InBox7"), QString::number(v1, 'f', 1));
  EXPECT_EQ(Text(s, "InBox15"), QString::number(v2, 'f', 1));
  const GeoPoint m = RadialIntersection(lat1, lon1, Norm360(45 + v1), lat2, lon2, Norm360(270 + v2));
  EXPECT_EQ(Text(s, "dataR1").toStdString(), IntersectionText(m.lon, true));
}

TEST_F(NavigationUi, MagneticVariationImportModelAndDate) {
  MagVarScreen s;
  Open(s);
  ASSERT_TRUE(ImportVia(s, "cmdImportInitial", "EGLL"));
  EXPECT_EQ(Texts(s, "InBox", 4), (std::vector<std::string>{"51", "28", "0", "28"}));  // minutes rounded
  Find<QDateEdit>(s, "DTPicker")->setDate(QDate(2007, 1, 1));
  Click(s, "OptModel0");
  EXPECT_EQ(s.windowTitle(), "Magnetic variation - WMM2005");
  Calculate(s);
  const double lat = (51 + 28 / 60.0) * kDegToRad, lon = -(28 / 60.0) * kDegToRad;
  EXPECT_EQ(Text(s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2007, 1, 1}, MagModel::WMM2005)));
  Click(s, "OptModel1");  // model and date recalculate at once
  EXPECT_EQ(Text(s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2007, 1, 1}, MagModel::IGRF10)));
  Find<QDateEdit>(s, "DTPicker")->setDate(QDate(2004, 6, 1));  // before the epoch: the 2005.0 field, and a notice
  EXPECT_EQ(Text(s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2005, 1, 1}, MagModel::IGRF10)));
  EXPECT_EQ(Text(s, "lblNotice").toStdString(), MagValidityNotice(MagModel::IGRF10, {2004, 6, 1}));
  Click(s, "OptModel3");
  Find<QDateEdit>(s, "DTPicker")->setDate(QDate(2026, 6, 1));
  EXPECT_EQ(s.windowTitle(), "Magnetic variation - IGRF-14");
  EXPECT_EQ(Text(s, "lblMV").toStdString(), MagVarText(ComputeMagVar(lat, lon, 0, {2026, 6, 1}, MagModel::IGRF14)));
  EXPECT_EQ(Text(s, "lblNotice"), "");
  Type(s, 4, "65001");
  EXPECT_FALSE(CanCalculate(s));
  EXPECT_EQ(Text(s, "lblMV"), "");
  s.clearResetData();
  EXPECT_EQ(Texts(s, "InBox", 5), (std::vector<std::string>{"", "", "", "", "0"}));
}

TEST_F(NavigationUi, MenuLoadsTheDatabaseOnceShownAndLocksItUnderNavigationScreens) {
  ScreenRegistry registry;
  RegisterNavigationScreens(registry);
  for (const bool stopped : {true, false}) {
    ActiveNavDB().Clear();
    MainMenu menu(registry);
    menu.timer()->setInterval(3'600'000);  // no tick from the timer during the test
    if (stopped) menu.timer()->stop();
    App().settings.DBPath = NORVANE_SAMPLE_DB;
    ASSERT_TRUE(Hooks().checkDatabase(App().settings.DBPath));
    bool finished = false;
    QObject::connect(&menu, &MainMenu::firstTickFinished, [&] { finished = true; });
    Show(menu);
    if (stopped) {
      QTest::qWait(50);
      EXPECT_FALSE(finished || NavDBActive());
      continue;
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return finished; }, 5000));
    EXPECT_EQ(menu.labelDB()->text(), "sample (0001)");
    menu.chooseItem(8);
    EXPECT_FALSE(menu.labelDB()->isEnabled());
    menu.openScreen()->close();
    EXPECT_TRUE(menu.labelDB()->isEnabled());
  }
  // A file that is no database: reported on the first tick and forgotten.
  MainMenu menu(registry);
  menu.timer()->stop();
  App().settings.DBPath = NORVANE_SOURCE_DIR "/data/waypoints/README.md";
  EXPECT_FALSE(Hooks().checkDatabase(App().settings.DBPath));
  menu.firstTick();
  EXPECT_EQ(menu.labelDB()->text(), "No waypoint DB");
  EXPECT_TRUE(App().settings.DBPath.empty());
}
