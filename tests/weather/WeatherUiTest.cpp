// The weather screen driven with real key and mouse events, against an HTTP server on 127.0.0.1.
// Wiring only: the texts behind it are tested in the core.
#include <QApplication>
#include <QClipboard>
#include <QDate>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>

#include "app/UiHelpers.hpp"
#include "online/Internet.hpp"
#include "support/LocalHttpServer.hpp"
#include "support/UiTest.hpp"
#include "weather/WeatherScreen.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

struct WeatherUiTest : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    norvane::testing::SetConnectionState(true);
    norvane::testing::SetStallTimeout(std::chrono::milliseconds(300));
    server.Serve("/data/observations/metar/stations/EGLL.TXT", &metar);
    server.Serve("/data/forecasts/taf/stations/EGLL.TXT", &taf);
    server.Routes().Get("/data/observations/metar/stations/KJFK.TXT",
                        [this](const httplib::Request&, httplib::Response& res) {
                          server.Stall();
                          res.set_content("late", "text/plain");
                        });
    qputenv(kWeatherUrlVariable, QByteArray::fromStdString(server.Start() + "/data"));
    screen = new WeatherScreen;
    screen->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(screen));
    code = Find<InputBox>(*screen, "inboxICAO");
    get = Find<QPushButton>(*screen, "CmdGetWeather");
    text = Find<QPlainTextEdit>(*screen, "TextWeather");
  }
  void TearDown() override {
    delete screen.data();
    server.Stop();
    qunsetenv(kWeatherUrlVariable);
    norvane::testing::SetConnectionState(std::nullopt);
    norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  }
  void Fetch(const char* icao) {
    code->setFocus();
    code->selectAll();
    QTest::keyClicks(code, icao);
    QTest::mouseClick(get, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !screen->busy(); }, 5000));
  }
  QColor Colour() const { return text->palette().color(QPalette::Text); }
  const std::string year = std::to_string(QDate::currentDate().year());
  const std::string metar = year + "/03/14 09:50\nEGLL 140950Z 24012KT 12/06 Q1018\n";
  const std::string taf = year + "/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT\n";
  LocalHttpServer server;
  QPointer<WeatherScreen> screen;
  InputBox* code = nullptr;
  QPushButton* get = nullptr;
  QPlainTextEdit* text = nullptr;
};

// Typed, pasted (keys, menu) and dropped text all go through the filter: pasted "egll" once stayed
// lower case.
TEST_F(WeatherUiTest, CodeBoxTakesFourLettersInCapitalsHoweverTheyCome) {
  EXPECT_FALSE(get->isEnabled());
  code->setFocus();
  QTest::keyClicks(code, "e1g-l");
  EXPECT_EQ(code->text(), "EGL");
  EXPECT_FALSE(get->isEnabled());  // the colours of a box's verdict: TypingValidatesLiveArmsCalculateAndClears
  QTest::keyClicks(code, "lx");
  EXPECT_EQ(code->text(), "EGLL");
  EXPECT_TRUE(get->isEnabled());

  QGuiApplication::clipboard()->setText(" egll\n");
  code->clear();
  QTest::keyClick(code, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(code->text(), "EGLL");
  QMimeData mime;
  mime.setText("k j f k");
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
  code->clear();
  QApplication::sendEvent(code, &enter);  // a drop goes to the widget that took the drag
  QApplication::sendEvent(code, &drop);
  EXPECT_EQ(code->text(), "KJFK");
  code->clear();
  QContextMenuEvent menuEvent(QContextMenuEvent::Mouse, QPoint(5, 5), code->mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(code, &menuEvent);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  for (QAction* a : menu->actions())
    if (a->text().startsWith("&Paste")) a->trigger();
  menu->close();
  EXPECT_EQ(code->text(), "EGLL");
}

TEST_F(WeatherUiTest, ReportsEditsOptionsAndFailures) {
  Fetch("EGLL");
  EXPECT_EQ(Text(*screen, "LblR").toStdString(), "Recorded: " + year + "/03/14 09:50");
  EXPECT_EQ(text->toPlainText(), "EGLL 140950Z 24012KT 12/06 Q1018");
  EXPECT_EQ(Colour(), Colours().validText);
  // A typed elevation redoes the decoded view (density altitude added); the raw view stays.
  auto* decoded = Find<QPlainTextEdit>(*screen, "TextDecoded");
  const QString before = decoded->toPlainText();
  EXPECT_FALSE(before.isEmpty());
  QTest::keyClicks(Find<InputBox>(*screen, "inboxElevation"), "1000");
  EXPECT_TRUE(decoded->toPlainText().startsWith(before.left(20)));
  EXPECT_TRUE(decoded->toPlainText().contains("\nDensity altitude ")) << decoded->toPlainText().toStdString();
  EXPECT_EQ(text->toPlainText(), "EGLL 140950Z 24012KT 12/06 Q1018");

  QTest::keyClick(code, Qt::Key_Backspace);  // any change of the code empties the results
  EXPECT_TRUE(Text(*screen, "LblR").isEmpty());
  EXPECT_TRUE(text->toPlainText().isEmpty());
  EXPECT_TRUE(decoded->toPlainText().isEmpty());

  Click(*screen, "OptW1");
  Fetch("EGLL");
  EXPECT_EQ(text->toPlainText(), "TAF EGLL 141058Z 1412/1518 24012KT");
  Click(*screen, "OptW0");

  Fetch("ZZZZ");  // unknown station: not found
  EXPECT_TRUE(text->toPlainText().startsWith("Unable to get weather data\n")) << text->toPlainText().toStdString();
  EXPECT_TRUE(Text(*screen, "LblR").isEmpty());
  EXPECT_EQ(Colour(), Colours().invalidText);
}

TEST_F(WeatherUiTest, ButtonWaitsWhileTheRequestRunsAndTheWindowStaysUsable) {
  norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  auto* cancel = Find<QPushButton>(*screen, "CmdCancel");
  EXPECT_FALSE(cancel->isEnabled());
  code->setFocus();
  QTest::keyClicks(code, "KJFK");
  for (int way = 0; way < 3; ++way) {  // abandoned by an edit, by Cancel, by closing the window
    QTest::mouseClick(get, Qt::LeftButton);
    EXPECT_TRUE(screen->busy());
    EXPECT_FALSE(get->isEnabled());
    EXPECT_TRUE(cancel->isEnabled());
    EXPECT_EQ(text->toPlainText(), "..Getting data..");
    EXPECT_EQ(Colour(), Colours().validText);
    QTest::qWait(50);
    if (way == 2) break;
    if (way == 0)
      QTest::keyClick(code, Qt::Key_Backspace), QTest::keyClicks(code, "K");
    else
      QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_FALSE(screen->busy()) << way;
    EXPECT_TRUE(get->isEnabled()) << way;
    EXPECT_TRUE(text->toPlainText().isEmpty()) << way;
  }
  screen->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return screen.isNull(); }, 2000));
}

}  // namespace
