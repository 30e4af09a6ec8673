// Drives the screen framework and the main menu with real key and mouse events.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLockFile>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <filesystem>
#include <iterator>
#include <gtest/gtest.h>

#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/CalculatorScreen.hpp"
#include "app/MainMenu.hpp"
#include "app/OptionsScreen.hpp"
#include "app/Platform.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/UiHelpers.hpp"
#include "support/RunProcess.hpp"
#include "support/UiTest.hpp"

using namespace norvane;

namespace {

// A small calculator: a + b, with a in 0..100 (integer) and b in -10..10 (decimal, may be empty).
class TestScreen : public CalculatorScreen {
 public:
  explicit TestScreen(int index = 0) : CalculatorScreen(index, QStringLiteral("frmData%1").arg(index), "Test") {
    BoxRule a{KeyMode::UnsignedInt, 0, 100};
    a.maxLength = 3;
    BoxRule b{KeyMode::SignedReal, -10, 10};
    b.allowEmpty = true;
    b.maxLength = 6;
    addBox(a, "A (0 to 100)", "5");
    addBox(b, "B (-10 to 10)");
    result = makeResult("dataR0");
    contentLayout()->addWidget(box(0));
    contentLayout()->addWidget(box(1));
    contentLayout()->addWidget(result);
  }
  int calculations = 0;
  QLabel* result;

 protected:
  bool calculate() override {
    ++calculations;
    result->setText(QString::number(box(0)->value() + box(1)->value()));
    return true;
  }
};

struct UiTest : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
  }
};

ScreenRegistry TestRegistry() {
  ScreenRegistry r;
  for (int k : {0, 1, 7, 15}) r.add(k, [k] { return new TestScreen(k); });
  return r;
}

}  // namespace

TEST_F(UiTest, TypingValidatesLiveAndArmsCalculate) {
  TestScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  auto* calc = s.findChild<QPushButton*>("cmdCalculate");
  auto* a = s.findChild<InputBox*>("InBox0");
  auto* b = s.findChild<InputBox*>("InBox1");
  ASSERT_TRUE(calc && a && b);
  EXPECT_TRUE(calc->isEnabled());  // the default 5 and an empty B are valid
  EXPECT_EQ(calc->palette().color(QPalette::Button), kCalculateArmed);
  EXPECT_EQ(a->palette().color(QPalette::Text), kValidText);

  a->setFocus();
  QTest::keyClicks(a, "1x0-");  // letters and a minus are swallowed in an unsigned box
  EXPECT_EQ(a->text(), "10");   // focus selected all, so typing replaced the default
  QTest::keyClicks(a, "17");    // the maximum length is 3
  EXPECT_EQ(a->text(), "101");
  EXPECT_FALSE(a->isValid());
  EXPECT_EQ(a->palette().color(QPalette::Text), kInvalidText);
  EXPECT_FALSE(calc->isEnabled());
  QTest::keyClick(a, Qt::Key_Backspace);
  EXPECT_TRUE(calc->isEnabled());

  b->setFocus();
  QTest::keyClicks(b, "-2,5");  // either separator key types the locale's
  EXPECT_EQ(b->text(), "-2.5");
  QTest::mouseClick(calc, Qt::LeftButton);
  EXPECT_EQ(s.result->text(), "7.5");
  EXPECT_TRUE(s.calculated());

  // Any edit clears the results at once; "3." is invalid until a digit follows.
  b->setFocus();
  QTest::keyClicks(b, "3.");
  EXPECT_TRUE(s.result->text().isEmpty());
  EXPECT_FALSE(s.calculated());
  EXPECT_FALSE(calc->isEnabled());
  QTest::keyClicks(b, "5");
  EXPECT_TRUE(calc->isEnabled());
}

TEST_F(UiTest, EnterMovesFocusAndNeverComputesEscCloses) {
  TestScreen s;
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
  QApplication::setActiveWindow(&s);
  auto* a = s.findChild<InputBox*>("InBox0");
  auto* b = s.findChild<InputBox*>("InBox1");
  a->setFocus();
  QTest::keyClick(a, Qt::Key_Return);
  EXPECT_TRUE(b->hasFocus());
  EXPECT_EQ(b->selectedText(), b->text());
  EXPECT_EQ(s.calculations, 0);
  bool unloaded = false;
  QObject::connect(&s, &CalculatorScreen::unloaded, [&] { unloaded = true; });
  s.setAttribute(Qt::WA_DeleteOnClose, false);
  QTest::keyClick(&s, Qt::Key_Escape);
  EXPECT_TRUE(unloaded);
  EXPECT_FALSE(s.isVisible());
}

TEST_F(UiTest, MenuKeyboardWrapsExactly) {
  const ScreenRegistry reg = TestRegistry();
  MainMenu menu(reg);
  menu.timer()->stop();
  menu.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  struct Row { int from; Qt::Key key; int to; };
  const Row rows[] = {{15, Qt::Key_Right, 6}, {5, Qt::Key_Left, 14}, {19, Qt::Key_Down, 0},
                      {0, Qt::Key_Up, 19},    {3, Qt::Key_Right, 13}, {12, Qt::Key_Left, 2},
                      {0, Qt::Key_Left, 0},   {19, Qt::Key_Right, 19}, {9, Qt::Key_Down, 10}};
  for (const Row& r : rows) {
    menu.highlight(r.from, true);
    QTest::keyClick(&menu, r.key);
    EXPECT_EQ(menu.hiIndex(), r.to) << r.from << " key " << r.key;
    EXPECT_EQ(menu.itemColor(r.to), kMenuHighlight);
    if (r.to != r.from) {
      EXPECT_EQ(menu.itemColor(r.from), kMenuIdle);
    }
  }
  // Enter opens the highlighted item.
  menu.highlight(7, true);
  QTest::keyClick(&menu, Qt::Key_Return);
  EXPECT_EQ(menu.currentForm(), 7);
  EXPECT_EQ(menu.itemColor(7), kMenuOpen);
  EXPECT_FALSE(menu.labelDB()->isEnabled());  // the database cannot change under screen 7
  menu.openScreen()->close();
}

TEST_F(UiTest, OneScreenAtATimeAndClosingReturnsTheItemToIdle) {
  const ScreenRegistry reg = TestRegistry();
  MainMenu menu(reg);
  menu.timer()->stop();
  menu.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  auto* item0 = menu.findChild<QWidget*>("menutitle0");
  auto* item1 = menu.findChild<QWidget*>("menutitle1");
  QTest::mouseClick(item0, Qt::RightButton);  // right or middle button opens nothing
  EXPECT_EQ(menu.currentForm(), -1);
  QTest::mouseClick(item0, Qt::LeftButton);
  EXPECT_EQ(menu.currentForm(), 0);
  QPointer<CalculatorScreen> first = menu.openScreen();
  EXPECT_EQ(first->x(), menu.frameGeometry().right() + 1);  // placed beside the menu
  QTest::mouseClick(item0, Qt::LeftButton);  // already open: nothing happens
  EXPECT_EQ(menu.openScreen(), first.data());
  QTest::mouseClick(item1, Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_EQ(menu.currentForm(), 1);
  EXPECT_EQ(menu.itemColor(0), kMenuIdle);
  EXPECT_EQ(menu.itemColor(1), kMenuOpen);
  QTest::qWait(10);
  EXPECT_TRUE(first.isNull());  // the first screen was unloaded
  // An item without a screen opens nothing.
  menu.chooseItem(3);
  EXPECT_EQ(menu.currentForm(), 1);
  // Closing with Exit leaves no item marked open.
  QTest::mouseClick(menu.openScreen()->findChild<QPushButton*>("cmdClose"), Qt::LeftButton);
  EXPECT_EQ(menu.currentForm(), -1);
  for (int k = 0; k < MainMenu::kItemCount; ++k) EXPECT_NE(menu.itemColor(k), kMenuOpen) << k;
  EXPECT_TRUE(menu.labelDB()->isEnabled());
}

TEST_F(UiTest, OptionsSaveStoresInMemoryCancelDoesNot) {
  App().settings.LTOffset = -3;
  {
    OptionsScreen o;
    o.show();
    auto* sync = o.findChild<QWidget*>("CheckSynchro");
    QTest::mouseClick(sync, Qt::LeftButton, {}, QPoint(5, sync->height() / 2));
    EXPECT_EQ(o.findChild<QLabel*>("LTOffsetLbl")->text(), "-3");
    EXPECT_EQ(o.findChild<QLabel*>("LblDBName")->text(), "No active valid database");
    QTest::mouseClick(o.findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
  }
  EXPECT_EQ(App().settings.Synchronize, 1);
  {
    OptionsScreen o;
    o.setAttribute(Qt::WA_DeleteOnClose, false);
    o.show();
    auto* sync = o.findChild<QWidget*>("CheckSynchro");
    QTest::mouseClick(sync, Qt::LeftButton, {}, QPoint(5, sync->height() / 2));
    QTest::mouseClick(o.findChild<QWidget*>("OptMetricUS1"), Qt::LeftButton, {}, QPoint(5, 5));
    QTest::keyClick(o.findChild<QScrollBar*>("LTOff"), Qt::Key_Right);  // Right adds an hour
    EXPECT_EQ(o.findChild<QLabel*>("LTOffsetLbl")->text(), "-2");
    QTest::mouseClick(o.findChild<QPushButton*>("cmdSave"), Qt::LeftButton);
  }
  EXPECT_EQ(App().settings.Synchronize, 0);
  EXPECT_EQ(App().settings.DefaultUnitSystem, 1);
  EXPECT_EQ(App().settings.LTOffset, -2);
}

TEST_F(UiTest, OptionsYearListFollowsTheModel) {
  OptionsScreen o;
  o.setAttribute(Qt::WA_DeleteOnClose, false);
  o.show();
  auto* years = o.findChild<QComboBox*>("MVCombo");
  QTest::mouseClick(o.findChild<QWidget*>("DefMVOpt2"), Qt::LeftButton, {}, QPoint(5, 5));  // WMM2025
  EXPECT_EQ(years->itemText(0) + years->itemText(4), "20252029");
  years->setCurrentIndex(2);
  QTest::mouseClick(o.findChild<QWidget*>("DefMVOpt3"), Qt::LeftButton, {}, QPoint(5, 5));  // IGRF-14
  QTest::mouseClick(o.findChild<QPushButton*>("cmdSave"), Qt::LeftButton);
  EXPECT_EQ(App().settings.DefMVModel, 3);
  EXPECT_EQ(App().settings.DefMVYear, 2027);
}

TEST_F(UiTest, SecondInstanceIsRefusedAndExitWritesTheSettings) {
  QTemporaryDir dir;
  QLockFile held(dir.path() + "/.Norvane.lock");
  ASSERT_TRUE(held.tryLock(0));
  QProcess p;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("NORVANE_APP_DIR", dir.path());
  env.insert("NORVANE_NONINTERACTIVE", "1");
  env.insert("QT_QPA_PLATFORM", "offscreen");
  p.setProcessEnvironment(env);
  p.start(NORVANE_BINARY, {});
  ASSERT_TRUE(p.waitForFinished(20000));
  EXPECT_EQ(p.exitCode(), 1);
  EXPECT_TRUE(p.readAllStandardError().contains("Another instance of Norvane is already running"));
  held.unlock();

  // A normal start with no settings file: closing the menu writes a complete file.
  const ScreenRegistry reg = TestRegistry();
  App().appPath = dir.path().toStdString() + "/";
  {
    MainMenu menu(reg);
    menu.show();
    menu.close();
  }
  const Settings written = ReadSettings(App().settingsFile());
  EXPECT_EQ(written.Synchronize, 1);
  EXPECT_EQ(written.Links.count, 14);
}

TEST_F(UiTest, AFailedSaveAtExitClosesAndLeavesTheOldFileWhole) {
  QTemporaryDir dir;
  App().appPath = dir.path().toStdString() + "/";
  Settings old;
  old.LTOffset = 4;
  ASSERT_TRUE(WriteSettings(App().settingsFile(), old));
  const Settings before = ReadSettings(App().settingsFile());
  const ScreenRegistry reg = TestRegistry();
  for (int fault : {ENOSPC, EIO}) {  // a full disk, an I/O error
    App().settings = old;
    App().settings.LTOffset = -6;  // changed in this session
    MainMenu menu(reg);
    menu.show();
    norvane::testing::SetWriteFault(fault);
    EXPECT_TRUE(menu.close());  // no question in the way of closing
    norvane::testing::SetWriteFault(0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ReadSettings(App().settingsFile()), before) << fault;
    // Nothing left beside it (no temporary file).
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path().toStdString()),
                            std::filesystem::directory_iterator{}),
              1);
  }
  // Once the disk has room again the next exit saves.
  MainMenu menu(reg);
  menu.show();
  EXPECT_TRUE(menu.close());
  EXPECT_EQ(ReadSettings(App().settingsFile()).LTOffset, -6);
}

TEST_F(UiTest, FocusedButtonsTakeEnterAndSpaceAndInvalidBoxesSayWhy) {
  TestScreen s;
  test::Show(s);
  QApplication::setActiveWindow(&s);
  auto* hint = test::Find<QLabel>(s, "lblhelp");
  test::Type(s, 0, "500");
  EXPECT_TRUE(hint->isVisible());
  EXPECT_EQ(hint->text(), "A (0 to 100)");
  QTest::keyClick(test::Box(s, 0), Qt::Key_Backspace);
  EXPECT_FALSE(hint->isVisible());
  QTest::keyClick(test::Box(s, 0), Qt::Key_Return);
  QTest::keyClick(test::Box(s, 1), Qt::Key_Return);
  auto* calc = test::Find<QPushButton>(s, "cmdCalculate");
  ASSERT_TRUE(calc->hasFocus());
  EXPECT_EQ(calc->palette().color(QPalette::Button), kFocusedCalculate);
  QTest::keyClick(calc, Qt::Key_Return);
  EXPECT_EQ(s.calculations, 1);
  EXPECT_EQ(s.result->text(), "50");
  QTest::keyClick(calc, Qt::Key_Space);
  EXPECT_EQ(s.calculations, 2);
  QTest::keyClick(calc, Qt::Key_Tab);
  EXPECT_EQ(calc->palette().color(QPalette::Button), kCalculateArmed);
  EXPECT_EQ(test::Find<QPushButton>(s, "cmdClose")->palette().color(QPalette::Button), kFocusedButton);
}

TEST_F(UiTest, MenuKeyboardFromTheStartAndScreensKeepTheirInputs) {
  const ScreenRegistry reg = TestRegistry();
  MainMenu menu(reg);
  menu.timer()->stop();
  menu.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  QApplication::setActiveWindow(&menu);
  EXPECT_EQ(menu.hiIndex(), 0);
  QTest::keyClick(&menu, Qt::Key_Tab);
  QTest::keyClick(&menu, Qt::Key_Return);
  ASSERT_EQ(menu.currentForm(), 1);
  CalculatorScreen* s = menu.openScreen();
  EXPECT_EQ(s->focusWidget(), test::Box(*s, 0));
  QApplication::setActiveWindow(s);
  QTest::keyClicks(s->focusWidget(), "42");
  QTest::keyClick(s->focusWidget(), Qt::Key_Tab);
  QTest::keyClicks(s->focusWidget(), "1.5");
  QTest::keyClick(s->focusWidget(), Qt::Key_Tab);
  QTest::keyClick(s->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(test::Text(*s, "dataR0"), "43.5");
  QTest::keyClick(s, Qt::Key_Escape);
  EXPECT_EQ(menu.hiIndex(), 1);  // the keyboard goes on from the item just closed
  EXPECT_EQ(menu.itemColor(1), kMenuHighlight);
  QTest::keyClick(&menu, Qt::Key_Return);
  s = menu.openScreen();
  ASSERT_TRUE(s);
  EXPECT_EQ(test::Texts(*s, "InBox", 2), (std::vector<std::string>{"42", "1.5"}));
  EXPECT_EQ(test::Text(*s, "dataR0"), "43.5");  // calculated again
  s->close();
}

TEST_F(UiTest, ScreensOpenBesideTheMenuWhollyOnItsScreen) {
  struct Row { QRect menu; QSize frame; QPoint at; };
  const QRect area(0, 0, 1400, 900);
  const Row rows[] = {{{100, 100, 400, 500}, {300, 400}, {500, 100}},     // right
                      {{1000, 300, 400, 500}, {300, 400}, {700, 300}},    // left
                      {{300, 300, 800, 500}, {400, 200}, {300, 700}},     // below, lifted onto the area
                      {{0, 600, 1300, 300}, {1200, 400}, {0, 500}}};      // nowhere free: on the area
  for (const Row& r : rows) EXPECT_EQ(PlaceBeside(r.menu, r.frame, area), r.at) << r.menu.x();

  const ScreenRegistry reg = TestRegistry();
  MainMenu menu(reg);
  menu.timer()->stop();
  menu.placeAt(QPoint(2000, 2000));  // a position saved on a display no longer there
  menu.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&menu));
  const QRect screen = menu.screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(menu.frameGeometry())) << menu.frameGeometry().x() << "," << menu.frameGeometry().y()
                                                     << " " << menu.frameGeometry().width() << "x" << menu.frameGeometry().height();
  menu.move(screen.left(), screen.top());
  menu.chooseItem(0);
  EXPECT_EQ(menu.openScreen()->x(), menu.frameGeometry().right() + 1);
  // Dragged to the right edge with "Synchronize windows": the screen goes to the left side.
  App().settings.Synchronize = 1;
  menu.firstTick();
  menu.timer()->start();
  menu.move(screen.right() - menu.frameGeometry().width(), screen.top());
  QTest::qWait(250);
  const QRect placed = menu.openScreen()->frameGeometry();
  EXPECT_TRUE(screen.contains(placed));
  EXPECT_LT(placed.right(), menu.frameGeometry().left());
  menu.openScreen()->close();
}

TEST_F(UiTest, AnUnreadableOrReadOnlySettingsFileIsKeptAndTheAboutBoxSaysSo) {
  QTemporaryDir dir;
  App().appPath = dir.path().toStdString() + "/";
  const std::pair<std::string, const char*> rows[] = {  // both were replaced by defaults at exit
      {"[NavDB]\r\nDBPath=/d/mine.dat\r\n" + std::string(2 << 20, ';'),  // more than the reader takes
       "The settings file could not be read; your changes are not saved"},
      {"[NavDB]\r\nDBPath=/d/mine.dat\r\n", "The settings file is read-only; your changes are not saved"}};
  for (const auto& [bytes, notice] : rows) {
    std::ofstream(App().settingsFile(), std::ios::binary | std::ios::trunc) << bytes;
    if (bytes.size() < 100) std::filesystem::permissions(App().settingsFile(), std::filesystem::perms::owner_read);
    LoadSettings(App());
    MainMenu menu(TestRegistry());
    menu.show();
    EXPECT_EQ(norvane::test::Text(*new AboutDialog(&menu), "LblSettingsNotice"), notice);
    EXPECT_TRUE(menu.close());
    EXPECT_EQ(norvane::test::ReadWhole(App().settingsFile()), bytes);
  }
}
