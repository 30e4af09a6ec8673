// frmImport "Search database" and the database wiring of the shell, driven with keys and mouse.
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "app/MainMenu.hpp"
#include "app/OptionsScreen.hpp"
#include "services/ImportDialog.hpp"
#include "services/NavDBShell.hpp"
#include "services/WaypointImport.hpp"

using namespace norvane;

namespace {

struct ImportDialogTest : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    db.SetDBPath(NORVANE_SAMPLE_DB);
    ASSERT_TRUE(db.CheckNavDB());
    ASSERT_TRUE(db.LoadNavDB());
  }
  NavDatabase db;
};

template <typename T>
T* Child(QWidget* w, const char* name) {
  T* c = w->findChild<T*>(name);
  EXPECT_NE(c, nullptr) << name;
  return c;
}

}  // namespace

TEST_F(ImportDialogTest, OneMatchClosesAtOnceWithThatRecord) {
  ImportDialog d(db);
  d.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&d));
  QApplication::setActiveWindow(&d);
  auto* box = Child<InputBox>(&d, "inICAO");
  box->setFocus();
  QTest::keyClicks(box, "egll");  // typed in capitals
  EXPECT_EQ(box->text(), "EGLL");
  QTest::keyClick(box, Qt::Key_Return);  // Enter moves on to Search...
  EXPECT_TRUE(Child<QPushButton>(&d, "cmdSearch")->hasFocus());
  EXPECT_TRUE(d.isVisible());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // ...where Enter presses it
  EXPECT_EQ(d.result(), QDialog::Accepted);
  ASSERT_NE(d.selectedRecord(), 0);
  EXPECT_EQ(ListLine(db.Record(d.selectedRecord())), "EGLL  APTN51\u00b028' W000\u00b028' ");
}

TEST_F(ImportDialogTest, SeveralMatchesFillTheListAndShowTheTypeText) {
  ImportDialog d(db);
  d.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&d));
  auto* box = Child<InputBox>(&d, "inICAO");
  auto* list = Child<QListWidget>(&d, "ListICAO");
  auto* info = Child<QLabel>(&d, "lblInfo");
  auto* select = Child<QPushButton>(&d, "cmdSelect");
  EXPECT_FALSE(select->isEnabled());
  QTest::keyClicks(box, "LAM");
  QTest::mouseClick(Child<QPushButton>(&d, "cmdSearch"), Qt::LeftButton);
  EXPECT_TRUE(d.isVisible());
  ASSERT_EQ(list->count(), 3);
  EXPECT_EQ(list->item(0)->text(), "LAM  VORN27\u00b022' E053\u00b011' ");
  EXPECT_EQ(list->item(1)->text(), "LAM  VORN51\u00b039' E000\u00b009' ");
  EXPECT_EQ(list->item(2)->text(), "LAM  NDBN27\u00b022' E053\u00b012' ");
  EXPECT_EQ(list->currentRow(), 0);
  EXPECT_TRUE(select->isEnabled());
  EXPECT_EQ(info->text(), "VOR - Frequency 117.00");
  // Clicking a line shows its type text.
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(2)).center());
  EXPECT_EQ(info->text(), "NDB - Frequency 346.0");
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
  EXPECT_EQ(info->text(), "VOR - Frequency 115.60");
  QTest::mouseClick(select, Qt::LeftButton);
  EXPECT_EQ(d.result(), QDialog::Accepted);
  EXPECT_EQ(ListLine(db.Record(d.selectedRecord())), "LAM  VORN51\u00b039' E000\u00b009' ");
}

TEST_F(ImportDialogTest, DoubleClickAndEnterInTheListSelect) {
  for (bool byKeyboard : {false, true}) {
    ImportDialog d(db);
    d.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&d));
    QApplication::setActiveWindow(&d);
    QTest::keyClicks(Child<InputBox>(&d, "inICAO"), "LAR");
    d.search();
    auto* list = Child<QListWidget>(&d, "ListICAO");
    ASSERT_EQ(list->count(), 5);
    if (byKeyboard) {
      EXPECT_TRUE(list->hasFocus());
      QTest::keyClick(list, Qt::Key_Down);
      QTest::keyClick(list, Qt::Key_Return);
    } else {
      const QPoint p = list->visualItemRect(list->item(1)).center();
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, p);
      QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, p);
    }
    EXPECT_EQ(d.result(), QDialog::Accepted) << byKeyboard;
    EXPECT_EQ(d.selectedRecord(), db.FindIdent("LAR").first + 1) << byKeyboard;
  }
}

TEST_F(ImportDialogTest, NotFoundAndExit) {
  ImportDialog d(db);
  d.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&d));
  auto* box = Child<InputBox>(&d, "inICAO");
  auto* search = Child<QPushButton>(&d, "cmdSearch");
  EXPECT_FALSE(search->isEnabled());  // nothing to search for yet
  QTest::keyClicks(box, "E-G!");      // only letters and digits are typed
  EXPECT_EQ(box->text(), "EG");
  QTest::mouseClick(search, Qt::LeftButton);  // "EG" does not find "EGLL"
  EXPECT_EQ(Child<QLabel>(&d, "lblInfo")->text(), "..Not found..");
  EXPECT_TRUE(d.isVisible());
  QTest::keyClicks(box, "L");
  EXPECT_TRUE(Child<QLabel>(&d, "lblInfo")->text().isEmpty());
  QTest::mouseClick(Child<QPushButton>(&d, "cmdExit"), Qt::LeftButton);
  EXPECT_EQ(d.result(), QDialog::Rejected);
  EXPECT_EQ(d.selectedRecord(), 0);
}

TEST_F(ImportDialogTest, ShellHooksOpenTheDatabaseAndNameIt) {
  InstallNavDBHooks();
  const ShellHooks& h = Hooks();
  ASSERT_TRUE(h.openDatabase && h.checkDatabase && h.loadDatabase && h.databaseDisplayName);
  EXPECT_TRUE(h.openDatabase(NORVANE_SAMPLE_DB));
  EXPECT_TRUE(NavDBActive());
  EXPECT_EQ(h.databaseDisplayName(), "sample (0001)");
  EXPECT_FALSE(h.openDatabase(NORVANE_SOURCE_DIR "/data/waypoints/navaids.csv"));
  EXPECT_FALSE(NavDBActive());
  EXPECT_TRUE(h.databaseDisplayName().isEmpty());
  // Start-up: check now, load on the first tick.
  EXPECT_TRUE(h.checkDatabase(NORVANE_SAMPLE_DB));
  EXPECT_FALSE(NavDBActive());
  EXPECT_TRUE(h.loadDatabase());
  EXPECT_TRUE(NavDBActive());
  EXPECT_FALSE(h.checkDatabase(""));
  EXPECT_FALSE(h.loadDatabase());
  // The sample beside the executables is offered when the settings name none.
  const std::string buildDir = std::string(NORVANE_SAMPLE_DB).substr(0, std::string(NORVANE_SAMPLE_DB).rfind('/'));
  EXPECT_EQ(SampleDatabasePath(buildDir), NORVANE_SAMPLE_DB);
  EXPECT_EQ(SampleDatabasePath("/nonexistent"), "");
}

TEST_F(ImportDialogTest, TheDatabaseFileChangingUnderTheProgramBreaksNothing) {
  namespace fs = std::filesystem;
  const fs::path dir = fs::temp_directory_path() / ("norvane-import-live-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  const fs::path file = dir / "live.dat";
  const auto cut = [&] { std::ofstream(file, std::ios::binary | std::ios::trunc) << std::string(100, '\x7f'); };
  Hooks() = ShellHooks{};
  InstallNavDBHooks();
  const ShellHooks& h = Hooks();

  // Loaded, then the file is cut short and deleted: searches answer from the loaded copy.
  fs::copy_file(NORVANE_SAMPLE_DB, file, fs::copy_options::overwrite_existing);
  ASSERT_TRUE(h.openDatabase(file.string()));
  cut();
  {
    ImportDialog d(ActiveNavDB());
    d.show();
    Child<InputBox>(&d, "inICAO")->setText("LAM");
    d.search();
    EXPECT_EQ(Child<QListWidget>(&d, "ListICAO")->count(), 3);
    fs::remove(file);
    Child<InputBox>(&d, "inICAO")->setText("EGLL");
    d.search();
    ASSERT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(ListLine(ActiveNavDB().Record(d.selectedRecord())), "EGLL  APTN51\u00b028' W000\u00b028' ");
  }

  // Checked at start-up, then cut short (or deleted) before the first tick loads it: the menu
  // says there is no database and why (tool tip and Options screen), an import says so instead of
  // opening, and the settings forget a refused file but keep a missing one (a disk unplugged).
  App().appPath = dir.string() + "/";
  for (const bool deleteIt : {false, true}) {
    fs::copy_file(NORVANE_SAMPLE_DB, file, fs::copy_options::overwrite_existing);
    App().settings.DBPath = file.string();
    ASSERT_TRUE(h.checkDatabase(file.string()));
    if (deleteIt) fs::remove(file);
    else cut();
    const ScreenRegistry none;
    MainMenu menu(none);
    menu.firstTick();
    const QString why = deleteIt ? "live.dat: file not found" : "live.dat: file length 100 is not a multiple of 12";
    EXPECT_EQ(menu.labelDB()->text(), "No waypoint DB") << deleteIt;
    EXPECT_EQ(menu.labelDB()->toolTip(), "Click to choose the waypoint database\n" + why);
    EXPECT_EQ(App().settings.DBPath, deleteIt ? file.string() : "") << deleteIt;
    EXPECT_FALSE(NavDBActive());
    EXPECT_EQ(ImportWaypoint(nullptr, {}, {}), ImportOutcome::NoDatabase);
    OptionsScreen options;
    EXPECT_EQ(options.findChild<QLabel*>("LblDBName")->text(), "No active valid database");
    EXPECT_EQ(options.findChild<QLabel*>("LblDBReason")->text(), why);
  }
  Hooks() = ShellHooks{};
  fs::remove_all(dir);
}
