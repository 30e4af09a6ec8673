// frmImport "Search database" and the database wiring of the shell, driven with keys and mouse.
#include <QApplication>
#include <QListWidget>

#include <filesystem>
#include <fstream>

#include "app/MainMenu.hpp"
#include "app/OptionsScreen.hpp"
#include "support/TempDir.hpp"
#include "support/UiTest.hpp"
#include "waypoints/ImportDialog.hpp"
#include "waypoints/NavDBShell.hpp"
#include "waypoints/WaypointImport.hpp"

using namespace norvane;
using namespace norvane::test;
namespace fs = std::filesystem;

namespace {

struct ImportDialogTest : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    db.SetDBPath(NORVANE_SAMPLE_DB);
    ASSERT_TRUE(db.CheckNavDB() && db.LoadNavDB());
  }
  // Shows the dialog, active, and types `ident` into its box.
  void Open(ImportDialog& d, const char* ident) {
    Show(d);
    QApplication::setActiveWindow(&d);
    Find<InputBox>(d, "inICAO")->setFocus();
    QTest::keyClicks(Find<InputBox>(d, "inICAO"), ident);
  }
  int32_t First(const char* ident) { return db.FindIdent(ident).first; }
  NavDatabase db;
};

TEST_F(ImportDialogTest, OneMatchClosesAtOnceWithThatRecord) {
  ImportDialog d(db);
  Open(d, "e-gll");  // typed in capitals, letters and digits only
  EXPECT_EQ(Text(d, "inICAO"), "EGLL");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // Enter moves on to Search...
  EXPECT_TRUE(Find<QPushButton>(d, "cmdSearch")->hasFocus());
  EXPECT_TRUE(d.isVisible());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // ...where Enter presses it
  EXPECT_EQ(d.result(), QDialog::Accepted);
  EXPECT_EQ(d.selectedRecord(), First("EGLL"));
}

// Several matches fill the list; a click shows the line's type text, and Select, a double click or
// Enter take the line.
TEST_F(ImportDialogTest, SeveralMatchesFillTheListToChooseFrom) {
  for (int way = 0; way < 3; ++way) {
    ImportDialog d(db);
    Open(d, "LAM");
    auto* list = Find<QListWidget>(d, "ListICAO");
    auto* select = Find<QPushButton>(d, "cmdSelect");
    EXPECT_FALSE(select->isEnabled());
    Click(d, "cmdSearch");
    ASSERT_EQ(list->count(), 3);
    EXPECT_EQ(list->item(2)->text().toStdString(), ListLine(db.Record(First("LAM") + 2)));
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_TRUE(select->isEnabled());
    const QPoint p = list->visualItemRect(list->item(1)).center();
    if (way == 2) {
      QTest::keyClick(list, Qt::Key_Down);
      QTest::keyClick(list, Qt::Key_Return);
    } else {
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, p);
      EXPECT_EQ(Text(d, "lblInfo").toStdString(), TypeText(db.Record(First("LAM") + 1)));
      if (way == 0)
        Click(d, "cmdSelect");
      else
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, p);
    }
    EXPECT_EQ(d.result(), QDialog::Accepted) << way;
    EXPECT_EQ(d.selectedRecord(), First("LAM") + 1) << way;
  }
}

TEST_F(ImportDialogTest, NotFoundAndExit) {
  ImportDialog d(db);
  Open(d, "");
  EXPECT_FALSE(Find<QPushButton>(d, "cmdSearch")->isEnabled());  // nothing to search for yet
  QTest::keyClicks(Find<InputBox>(d, "inICAO"), "EG");
  Click(d, "cmdSearch");  // "EG" does not find "EGLL"
  EXPECT_EQ(Text(d, "lblInfo"), "..Not found..");
  EXPECT_TRUE(d.isVisible());
  QTest::keyClicks(Find<InputBox>(d, "inICAO"), "L");
  EXPECT_TRUE(Text(d, "lblInfo").isEmpty());
  Click(d, "cmdExit");
  EXPECT_EQ(d.result(), QDialog::Rejected);
  EXPECT_EQ(d.selectedRecord(), 0);
}

TEST_F(ImportDialogTest, ShellHooksOpenTheDatabaseAndNameIt) {
  InstallNavDBHooks();
  const ShellHooks& h = Hooks();
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
  EXPECT_EQ(SampleDatabasePath(fs::path(NORVANE_SAMPLE_DB).parent_path().string()), NORVANE_SAMPLE_DB);
  EXPECT_EQ(SampleDatabasePath("/nonexistent"), "");
  Hooks() = ShellHooks{};
}

// Checked at start-up, then cut short (or deleted) before the first tick loads it: the menu says
// there is no database and why (tool tip and Options screen), an import says so instead of opening,
// and the settings forget a refused file but keep a missing one (a disk unplugged).
TEST_F(ImportDialogTest, TheDatabaseFileChangingUnderTheProgramBreaksNothing) {
  const TempDir dir;
  const fs::path file = dir.path / "live.dat";
  Hooks() = ShellHooks{};
  InstallNavDBHooks();
  const ShellHooks& h = Hooks();
  App().appPath = dir.path.string() + "/";
  for (const bool deleteIt : {false, true}) {
    fs::copy_file(NORVANE_SAMPLE_DB, file, fs::copy_options::overwrite_existing);
    App().settings.DBPath = file.string();
    ASSERT_TRUE(h.checkDatabase(file.string()));
    if (deleteIt)
      fs::remove(file);
    else
      std::ofstream(file, std::ios::binary | std::ios::trunc) << std::string(100, '\x7f');
    const ScreenRegistry none;
    MainMenu menu(none);
    menu.firstTick();
    EXPECT_EQ(menu.labelDB()->text(), "No waypoint DB") << deleteIt;
    const QString why = menu.labelDB()->toolTip().section('\n', 1);
    EXPECT_EQ(why, deleteIt ? "live.dat: file not found" : "live.dat: file length 100 is not a multiple of 12");
    EXPECT_EQ(App().settings.DBPath, deleteIt ? file.string() : "") << deleteIt;
    EXPECT_FALSE(NavDBActive());
    EXPECT_EQ(ImportWaypoint(nullptr, {}, {}), ImportOutcome::NoDatabase);
    OptionsScreen options;
    EXPECT_EQ(Text(options, "LblDBReason"), why);
  }
  Hooks() = ShellHooks{};
}

}  // namespace
