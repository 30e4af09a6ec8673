// The screen framework, the main menu and the Options screen's effects, driven with real key and
// mouse events; the program itself for the single instance and the screenshots.
#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QImage>
#include <QComboBox>
#include <QLabel>
#include <QLockFile>
#include <QProcess>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>

#include "app/AboutDialog.hpp"
#include "app/CalculatorScreen.hpp"
#include "app/MainMenu.hpp"
#include "app/OptionsScreen.hpp"
#include "app/Platform.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/UiHelpers.hpp"
#include "support/RunProcess.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;

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
    QRadioButton* units[2];
    QWidget* unitsFrame = makeUnitsFrame("Units", units);  // first, so that Enter in B reaches Calculate
    addBox(a, "A (0 to 100)", "5");
    addBox(b, "B (-10 to 10)");
    result = makeResult("dataR0");
    for (QWidget* w :
         {unitsFrame, static_cast<QWidget*>(box(0)), static_cast<QWidget*>(box(1)), static_cast<QWidget*>(result)})
      contentLayout()->addWidget(w);
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

ScreenRegistry TestRegistry() {
  ScreenRegistry r;
  for (int k : {0, 1, 7, 15}) r.add(k, [k] { return new TestScreen(k); });
  return r;
}

struct MenuUi : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    ASSERT_TRUE(dir.isValid());
    App().appPath = dir.path().toStdString() + "/";
  }
  QTemporaryDir dir;
  const ScreenRegistry registry = TestRegistry();
};

}  // namespace

TEST_F(UiFixture, TypingValidatesLiveArmsCalculateAndClears) {
  TestScreen s;
  Show(s);
  EXPECT_TRUE(CanCalculate(s));  // the default 5 and an empty B are valid
  EXPECT_EQ(Find<QPushButton>(s, "cmdCalculate")->palette().color(QPalette::Button), Colours().calculateArmed);
  Type(s, 0, "1x0-");  // letters and a minus are swallowed in an unsigned box
  EXPECT_EQ(Text(s, "InBox0"), "10");
  QTest::keyClicks(Box(s, 0), "17");  // the maximum length is 3
  EXPECT_EQ(Text(s, "InBox0"), "101");
  EXPECT_EQ(Box(s, 0)->palette().color(QPalette::Text), Colours().invalidText);
  EXPECT_FALSE(CanCalculate(s));
  QTest::keyClick(Box(s, 0), Qt::Key_Backspace);
  EXPECT_EQ(Box(s, 0)->palette().color(QPalette::Text), Colours().validText);
  Type(s, 1, "-2,5");  // either separator key types the locale's
  EXPECT_EQ(Text(s, "InBox1"), "-2.5");
  Calculate(s);
  EXPECT_EQ(Text(s, "dataR0"), "7.5");
  Type(s, 1, "3.");  // any edit clears at once; "3." waits for a digit
  EXPECT_EQ(Text(s, "dataR0"), "");
  EXPECT_FALSE(s.calculated());
  EXPECT_FALSE(CanCalculate(s));
}

TEST_F(MenuUi, KeyboardWrapsAndOneScreenAtATime) {
  MainMenu menu(registry);
  menu.timer()->stop();
  Show(menu);
  struct Row {
    int from;
    Qt::Key key;
    int to;
  };
  // Item 20 spans the row under both columns: last in index and in reading order.
  const Row rows[] = {{15, Qt::Key_Right, 6}, {5, Qt::Key_Left, 14}, {19, Qt::Key_Down, 20},  {20, Qt::Key_Down, 0},
                      {0, Qt::Key_Up, 20},    {0, Qt::Key_Left, 0},  {19, Qt::Key_Right, 20}, {20, Qt::Key_Right, 20},
                      {20, Qt::Key_Left, 19}, {9, Qt::Key_Down, 10}};
  for (const Row& r : rows) {
    menu.highlight(r.from, true);
    QTest::keyClick(&menu, r.key);
    EXPECT_EQ(menu.hiIndex(), r.to) << r.from << " key " << r.key;
    EXPECT_EQ(menu.itemColor(r.to), Colours().menuHighlight);
    if (r.to != r.from) {
      EXPECT_EQ(menu.itemColor(r.from), Colours().menuIdle);
    }
  }
  menu.highlight(7, true);
  QTest::keyClick(&menu, Qt::Key_Return);  // Enter opens the highlighted item
  EXPECT_EQ(menu.currentForm(), 7);
  EXPECT_EQ(menu.itemColor(7), Colours().menuOpen);
  EXPECT_FALSE(menu.labelDB()->isEnabled());  // the database cannot change under screen 7

  auto* item0 = menu.findChild<QWidget*>("menutitle0");
  QTest::mouseClick(item0, Qt::RightButton);  // right or middle button opens nothing
  EXPECT_EQ(menu.currentForm(), 7);
  QTest::mouseClick(item0, Qt::LeftButton);
  QPointer<CalculatorScreen> first = menu.openScreen();
  EXPECT_EQ(first->x(), menu.frameGeometry().right() + 1);  // placed beside the menu
  QTest::mouseClick(item0, Qt::LeftButton);                 // already open: nothing happens
  EXPECT_EQ(menu.openScreen(), first.data());
  QTest::mouseClick(menu.findChild<QWidget*>("menutitle1"), Qt::LeftButton);
  EXPECT_EQ(menu.currentForm(), 1);
  EXPECT_EQ(menu.itemColor(0), Colours().menuIdle);
  QTest::qWait(10);
  EXPECT_TRUE(first.isNull());  // the first screen was unloaded
  menu.chooseItem(3);           // an item without a screen opens nothing
  EXPECT_EQ(menu.currentForm(), 1);
  Click(*menu.openScreen(), "cmdClose");
  EXPECT_EQ(menu.currentForm(), -1);
  for (int k = 0; k < MainMenu::kItemCount; ++k) EXPECT_NE(menu.itemColor(k), Colours().menuOpen) << k;
  EXPECT_TRUE(menu.labelDB()->isEnabled());
}

TEST_F(MenuUi, OptionsSaveStoresCancelDoesNot) {
  App().settings.LTOffset = -3;
  MainMenu menu(registry);
  const QPalette day = QApplication::palette();
  for (const char* button : {"cmdCancel", "cmdSave"}) {
    OptionsScreen o;
    Show(o);
    EXPECT_EQ(Text(o, "LTOffsetLbl"), "-3");
    Click(o, "CheckSynchro");
    Click(o, "OptMetricUS1");
    Click(o, "OptColours1");
    QTest::keyClick(Find<QScrollBar>(o, "LTOff"), Qt::Key_Right);  // Right adds an hour
    Click(o, button);
    EXPECT_EQ(App().settings.LTOffset, button == std::string("cmdSave") ? -2 : -3);
    EXPECT_EQ(App().night, button == std::string("cmdSave"));
  }
  EXPECT_EQ(App().settings.Synchronize, 0);
  EXPECT_EQ(App().settings.DefaultUnitSystem, 1);
  EXPECT_EQ(App().settings.LTOffset, -2);
  // Saved, the colours change at once: the application palette and the open menu's items.
  EXPECT_EQ(App().settings.Colours, 1);
  EXPECT_EQ(QApplication::palette(), NightPalette());
  EXPECT_EQ(menu.itemColor(5), kNightColours.menuIdle);
  OptionsScreen o;
  Show(o);
  EXPECT_TRUE(Checked(o, "OptColours1"));
  Click(o, "OptColours0");
  Click(o, "cmdSave");
  EXPECT_EQ(App().settings.Colours, 0);
  EXPECT_EQ(QApplication::palette(), day);
  EXPECT_EQ(menu.itemColor(5), kDayColours.menuIdle);
}

// What each setting does: the unit system of a newly opened screen, Synchronize (the open screen
// follows the menu) and RemindPosition (the menu's place written at exit).
TEST_F(MenuUi, SettingsTakeEffect) {
  for (int16_t units : {0, 1}) {
    App().settings.DefaultUnitSystem = units;
    TestScreen s;
    EXPECT_TRUE(Checked(s, QStringLiteral("OptUnits%1").arg(units)));
  }
  for (int16_t sync : {1, 0}) {
    App().settings.Synchronize = sync;
    MainMenu menu(registry);
    Show(menu);
    menu.chooseItem(0);
    const QPoint before = menu.openScreen()->pos();
    menu.move(menu.pos() + QPoint(40, 30));
    QTest::qWait(250);                                                 // several ticks of either interval
    EXPECT_EQ(menu.openScreen()->pos() != before, sync == 1) << sync;  // placed beside the menu anew
    menu.openScreen()->close();
  }
  for (int16_t remind : {1, 0}) {
    App().settings.RemindPosition = remind;
    MainMenu menu(registry);
    Show(menu);
    menu.move(100, 200);
    const QPoint at = menu.frameGeometry().topLeft();
    ASSERT_TRUE(menu.close());
    const Settings written = ReadSettings(App().settingsFile());
    EXPECT_EQ(written.IniLeft, remind ? at.x() * 15 : 0);
    EXPECT_EQ(written.IniTop, remind ? at.y() * 15 : 0);
  }
}

TEST_F(MenuUi, AFailedSaveAtExitClosesAndLeavesTheOldFileWhole) {
  Settings old;
  old.LTOffset = 4;
  ASSERT_TRUE(WriteSettings(App().settingsFile(), old));
  for (int fault : {ENOSPC, EIO}) {
    App().settings = old;
    App().settings.LTOffset = -6;  // changed in this session
    MainMenu menu(registry);
    menu.show();
    norvane::testing::SetWriteFault(fault);
    EXPECT_TRUE(menu.close());  // no question in the way of closing
    norvane::testing::SetWriteFault(0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(ReadSettings(App().settingsFile()), old) << fault;
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);  // no temporary file
  }
  MainMenu menu(registry);  // once the disk has room again the next exit saves
  menu.show();
  EXPECT_TRUE(menu.close());
  EXPECT_EQ(ReadSettings(App().settingsFile()).LTOffset, -6);
}

TEST_F(MenuUi, OptionsYearListFollowsTheModel) {
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

TEST_F(MenuUi, TheProgramRefusesASecondInstanceAndWritesScreenshots) {
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

  const QString shots = dir.path() + "/shots";
  env.remove("NORVANE_APP_DIR");  // screenshots run in a scratch folder of their own
  p.setProcessEnvironment(env);
  p.start(NORVANE_BINARY, {"--screenshots", shots});
  ASSERT_TRUE(p.waitForFinished(120000));
  EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
  for (const char* png : {"menu.png", "frmData0.png", "frmData7.png", "frmData15.png", "frmData20.png"})
    EXPECT_TRUE(QFile::exists(shots + "/" + png)) << png;

  // By night, in a user's program folder: the settings there stay as they are.
  const std::string mine = "[Options]\r\nLTOffset=2\r\n";
  std::ofstream(App().settingsFile(), std::ios::binary) << mine;
  env.insert("NORVANE_APP_DIR", dir.path());
  p.setProcessEnvironment(env);
  p.start(NORVANE_BINARY, {"--screenshots", shots + "-night", "--night"});
  ASSERT_TRUE(p.waitForFinished(120000));
  EXPECT_EQ(p.exitCode(), 0);
  EXPECT_EQ(QImage(shots + "-night/menu.png").pixelColor(2, 2), NightPalette().color(QPalette::Window));
  EXPECT_EQ(ReadWhole(App().settingsFile()), mine);
}

// Enter moves from box to box and never computes; a focused button takes Enter and Space; Esc closes.
TEST_F(UiFixture, FocusedButtonsTakeEnterAndSpaceEscClosesAndInvalidBoxesSayWhy) {
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
  EXPECT_TRUE(test::Box(s, 1)->hasFocus());
  QTest::keyClick(test::Box(s, 1), Qt::Key_Return);
  auto* calc = test::Find<QPushButton>(s, "cmdCalculate");
  ASSERT_TRUE(calc->hasFocus());
  EXPECT_EQ(s.calculations, 0);
  EXPECT_EQ(calc->palette().color(QPalette::Button), Colours().focusedCalculate);
  QTest::keyClick(calc, Qt::Key_Return);
  EXPECT_EQ(s.calculations, 1);
  EXPECT_EQ(s.result->text(), "50");
  QTest::keyClick(calc, Qt::Key_Space);
  EXPECT_EQ(s.calculations, 2);
  QTest::keyClick(calc, Qt::Key_Tab);
  EXPECT_EQ(calc->palette().color(QPalette::Button), Colours().calculateArmed);
  EXPECT_EQ(test::Find<QPushButton>(s, "cmdClose")->palette().color(QPalette::Button), Colours().focusedButton);
  bool unloaded = false;
  QObject::connect(&s, &CalculatorScreen::unloaded, [&] { unloaded = true; });
  QTest::keyClick(&s, Qt::Key_Escape);
  EXPECT_TRUE(unloaded);
  EXPECT_FALSE(s.isVisible());
}

TEST_F(MenuUi, MenuKeyboardFromTheStartAndScreensKeepTheirInputs) {
  MainMenu menu(registry);
  menu.timer()->stop();
  Show(menu);
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
  EXPECT_EQ(menu.itemColor(1), Colours().menuHighlight);
  QTest::keyClick(&menu, Qt::Key_Return);
  s = menu.openScreen();
  ASSERT_TRUE(s);
  EXPECT_EQ(test::Texts(*s, "InBox", 2), (std::vector<std::string>{"42", "1.5"}));
  EXPECT_EQ(test::Text(*s, "dataR0"), "43.5");  // calculated again
  s->close();
}

TEST_F(MenuUi, ScreensOpenBesideTheMenuWhollyOnItsScreen) {
  struct Row {
    QRect menu;
    QSize frame;
    QPoint at;
  };
  const QRect area(0, 0, 1400, 900);
  const Row rows[] = {{{100, 100, 400, 500}, {300, 400}, {500, 100}},   // right
                      {{1000, 300, 400, 500}, {300, 400}, {700, 300}},  // left
                      {{300, 300, 800, 500}, {400, 200}, {300, 700}},   // below, lifted onto the area
                      {{0, 600, 1300, 300}, {1200, 400}, {0, 500}}};    // nowhere free: on the area
  for (const Row& r : rows) EXPECT_EQ(PlaceBeside(r.menu, r.frame, area), r.at) << r.menu.x();

  MainMenu menu(registry);
  menu.timer()->stop();
  menu.placeAt(QPoint(2000, 2000));  // a position saved on a display no longer there
  Show(menu);
  const QRect screen = menu.screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(menu.frameGeometry()))
      << menu.frameGeometry().x() << "," << menu.frameGeometry().y() << " " << menu.frameGeometry().width() << "x"
      << menu.frameGeometry().height();
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

TEST_F(MenuUi, AnUnreadableOrReadOnlySettingsFileIsKeptAndTheAboutBoxSaysSo) {
  const std::pair<std::string, const char*> rows[] = {
      // both were replaced by defaults at exit
      {"[NavDB]\r\nDBPath=/d/mine.dat\r\n" + std::string(2 << 20, ';'),  // more than the reader takes
       "The settings file could not be read; your changes are not saved"},
      {"[NavDB]\r\nDBPath=/d/mine.dat\r\n", "The settings file is read-only; your changes are not saved"}};
  for (const auto& [bytes, notice] : rows) {
    std::ofstream(App().settingsFile(), std::ios::binary | std::ios::trunc) << bytes;
    if (bytes.size() < 100) std::filesystem::permissions(App().settingsFile(), std::filesystem::perms::owner_read);
    LoadSettings(App());
    MainMenu menu(registry);
    menu.show();
    EXPECT_EQ(Text(*new AboutDialog(&menu), "LblSettingsNotice"), notice);
    EXPECT_TRUE(menu.close());
    EXPECT_EQ(ReadWhole(App().settingsFile()), bytes);
  }
}

// Every numeric box of every screen names, in its tool tip, the range its rule checks, whichever
// option is chosen: a hand-written "(50 to 1500 kts)" or a unit switch that moves the range but not
// the tip would tell the user one thing and check another.
TEST_F(UiFixture, EveryBoxSaysTheRangeItChecks) {
  ScreenRegistry registry;
  RegisterAllScreens(registry);
  // Numbers as the tips write them ("-500", "0.05", "1 500 000"), rounded to the digits shown
  // ("0 to 60" for a check that stops at 59.99); "up to 5400" starts at 0.
  const QString number = QStringLiteral("([-+]?\\d{1,3}(?: \\d{3})+|[-+]?\\d+(?:\\.\\d+)?)");
  const QRegularExpression range("(?:" + number + "|up) to " + number);
  const auto near = [](QString shown, double rule) {
    shown.remove(QLatin1Char(' '));
    const qsizetype point = shown.indexOf(QLatin1Char('.'));
    const int decimals = point < 0 ? 0 : int(shown.size() - point - 1);
    return std::abs(shown.toDouble() - rule) <= 0.5 * std::pow(10.0, -decimals);
  };
  std::set<std::string> wrong;  // one line per box and tool tip
  for (const auto& [index, factory] : registry.all()) {
    std::unique_ptr<CalculatorScreen> screen(factory());
    screen->show();
    const auto check = [&] {
      for (InputBox* b : screen->findChildren<InputBox*>()) {
        const KeyMode mode = b->rule().mode;
        if (mode == KeyMode::Letters || mode == KeyMode::LettersDigits || !b->isVisibleTo(screen.get())) continue;
        const QRegularExpressionMatch m = range.match(b->toolTip());
        const QString from = m.captured(1).isEmpty() ? QStringLiteral("0") : m.captured(1);
        if (!m.hasMatch() || !near(from, b->rule().min) || !near(m.captured(2), b->rule().max))
          wrong.insert((screen->objectName() + "/" + b->objectName() + " \"" + b->toolTip() + "\" checks " +
                        QString::number(b->rule().min) + " to " + QString::number(b->rule().max))
                           .toStdString());
      }
    };
    check();
    for (QRadioButton* r : screen->findChildren<QRadioButton*>()) {
      if (!r->isEnabled() || !r->isVisibleTo(screen.get())) continue;
      r->click();
      check();
    }
  }
  for (const std::string& w : wrong) ADD_FAILURE() << w;
}

// A screen reader finds every focusable control of every screen by its caption, and reads a
// result with its caption ("Bank (°): 25"), not a bare number.
TEST_F(UiFixture, EveryScreenIsReadableByItsAccessibilityTree) {
  ScreenRegistry registry;
  RegisterAllScreens(registry);
  for (const auto& [index, factory] : registry.all()) {
    std::unique_ptr<CalculatorScreen> screen(factory());
    screen->show();
    screen->prepareScreenshot();
    const std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* a) {
      if (!a) return;
      const QAccessible::State state = a->state();
      if (state.focusable && !state.invisible) {
        EXPECT_FALSE(a->text(QAccessible::Name).trimmed().isEmpty())
            << screen->objectName().toStdString() << ": unnamed " << a->object()->metaObject()->className() << " "
            << a->object()->objectName().toStdString();
      }
      for (int i = 0; i < a->childCount(); ++i) walk(a->child(i));
    };
    walk(QAccessible::queryAccessibleInterface(screen.get()));
    for (QLabel* r : screen->findChildren<QLabel*>()) {
      if (!r->property("norvaneResult").toBool() || r->text().isEmpty()) continue;
      const QString name = r->accessibleName();
      EXPECT_TRUE(name.endsWith(": " + r->text()) && name.size() > r->text().size() + 2)
          << screen->objectName().toStdString() << "/" << r->objectName().toStdString() << ": " << name.toStdString();
    }
  }
}
