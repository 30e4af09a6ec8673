// The weather, links and update screens driven with real key and mouse events, against HTTP
// servers on 127.0.0.1.
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QDate>
#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <sodium.h>

#include <functional>
#include <tuple>

#include "LocalHttpServer.hpp"
#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/InputBox.hpp"
#include "app/MainMenu.hpp"
#include "app/Platform.hpp"
#include "app/UiHelpers.hpp"
#include "services/Internet.hpp"
#include "services/LinksScreen.hpp"
#include "services/SelfUpdate.hpp"
#include "services/ServerAddresses.hpp"
#include "services/UpdateInfo.hpp"
#include "services/UpdateSignature.hpp"
#include "services/UpdateUi.hpp"
#include "services/WeatherScreen.hpp"

using namespace norvane;

namespace {

std::string Year(int offset = 0) { return std::to_string(QDate::currentDate().year() + offset); }

// Answers the next message box with `answer`, keeping what it showed.
struct MessageBoxAnswer {
  QString text;
  QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
  int seen = 0;
};
void AnswerNextMessageBox(QMessageBox::StandardButton answer, MessageBoxAnswer* seen) {
  auto* poll = new QTimer;
  poll->setInterval(10);
  QObject::connect(poll, &QTimer::timeout, [poll, answer, seen] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return;
    poll->stop();
    poll->deleteLater();
    seen->text = box->text();
    seen->defaultButton = box->standardButton(box->defaultButton());
    ++seen->seen;
    box->button(answer)->click();
  });
  poll->start();
}

struct ServicesUiTest : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
    ASSERT_TRUE(appDir.isValid());
    App().appPath = appDir.path().toStdString() + "/";  // a menu that closes writes Norvane.ini here
    norvane::testing::SetConnectionState(true);
    norvane::testing::SetStallTimeout(std::chrono::milliseconds(300));
  }
  void TearDown() override {
    server.Stop();
    qunsetenv(kWeatherUrlVariable);
    qunsetenv(kUpdateUrlVariable);
    norvane::testing::SetConnectionState(std::nullopt);
    norvane::testing::SetStallTimeout(std::chrono::seconds(20));
    norvane::testing::SetRunningExecutable({});
    norvane::testing::SetTrustedUpdateKey(std::nullopt);
  }
  QTemporaryDir appDir;
  test::LocalHttpServer server;
};

// ---------------------------------------------------------------------------------------------
// Airport weather

struct WeatherUiTest : ServicesUiTest {
  void SetUp() override {
    ServicesUiTest::SetUp();
    auto& r = server.Routes();
    const auto serve = [&r](const std::string& path, const std::string& body) {
      r.Get(path, [body](const httplib::Request&, httplib::Response& res) { res.set_content(body, "text/plain"); });
    };
    serve("/data/observations/metar/stations/EGLL.TXT",
          Year() + "/03/14 09:50\nEGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG\n");
    serve("/data/forecasts/taf/stations/EGLL.TXT",
          Year() + "/03/14 11:02\nTAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030 \n      TEMPO 1412/1418 BKN014\n");
    serve("/data/observations/metar/stations/LFOK.TXT", Year(-1) + "/12/31 23:30\nLFOK 312330Z 00000KT CAVOK\n");
    r.Get("/data/observations/metar/stations/KJFK.TXT", [this](const httplib::Request&, httplib::Response& res) {
      server.Stall();
      res.set_content("late", "text/plain");
    });
    qputenv(kWeatherUrlVariable, QByteArray::fromStdString(server.Start() + "/data"));
    screen = new WeatherScreen;
    screen->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(screen));
    code = screen->findChild<InputBox*>("inboxICAO");
    get = screen->findChild<QPushButton*>("CmdGetWeather");
    recorded = screen->findChild<QLabel*>("LblR");
    text = screen->findChild<QPlainTextEdit*>("TextWeather");
    ASSERT_TRUE(code && get && recorded && text);
  }
  void TearDown() override {
    delete screen.data();
    ServicesUiTest::TearDown();
  }
  void Fetch(const char* icao) {
    code->setFocus();
    code->selectAll();
    QTest::keyClicks(code, icao);
    QTest::mouseClick(get, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !screen->busy(); }, 5000));
  }
  QPointer<WeatherScreen> screen;
  InputBox* code = nullptr;
  QPushButton* get = nullptr;
  QLabel* recorded = nullptr;
  QPlainTextEdit* text = nullptr;
};

TEST_F(WeatherUiTest, CodeBoxTakesFourLettersInCapitals) {
  EXPECT_FALSE(get->isEnabled());
  code->setFocus();
  QTest::keyClicks(code, "e1g-l");
  EXPECT_EQ(code->text(), "EGL");
  EXPECT_FALSE(get->isEnabled());  // three letters
  EXPECT_EQ(code->palette().color(QPalette::Text), kInvalidText);
  QTest::keyClicks(code, "lx");    // the box holds four
  EXPECT_EQ(code->text(), "EGLL");
  EXPECT_TRUE(get->isEnabled());
  EXPECT_EQ(code->palette().color(QPalette::Text), kValidText);
}

// Pasted and dropped text bypassed the key filter: pasted "egll" stayed lower case.
TEST_F(WeatherUiTest, PastedAndDroppedCodesAreFilteredAsTyped) {
  QGuiApplication::clipboard()->setText(" egll\n");
  code->setFocus();
  QTest::keyClick(code, Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(code->text() == "EGLL" && get->isEnabled());
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

TEST_F(WeatherUiTest, ReportsAndFailures) {
  Fetch("egll");
  EXPECT_EQ(recorded->text().toStdString(), "Recorded: " + Year() + "/03/14 09:50");
  EXPECT_EQ(text->toPlainText(), "EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG");
  EXPECT_EQ(text->palette().color(QPalette::Text), kValidText);
  EXPECT_TRUE(get->isEnabled());
  // The decoded view beside it; a typed elevation adds the density altitude, the raw view stays.
  auto* decoded = screen->findChild<QPlainTextEdit*>("TextDecoded");
  ASSERT_TRUE(decoded);
  EXPECT_TRUE(decoded->toPlainText().startsWith("Routine report (METAR) for EGLL\n")) << decoded->toPlainText().toStdString();
  EXPECT_FALSE(decoded->toPlainText().contains("Density altitude"));
  auto* elevation = screen->findChild<InputBox*>("inboxElevation");
  elevation->setFocus();
  QTest::keyClicks(elevation, "1000");
  EXPECT_TRUE(decoded->toPlainText().contains("\nDensity altitude ")) << decoded->toPlainText().toStdString();
  EXPECT_EQ(text->toPlainText(), "EGLL 140950Z 24012KT 9999 FEW030 12/06 Q1018 NOSIG");

  // Any change of the code empties the results.
  QTest::keyClick(code, Qt::Key_Backspace);
  EXPECT_TRUE(recorded->text().isEmpty());
  EXPECT_TRUE(text->toPlainText().isEmpty());

  QTest::mouseClick(screen->findChild<QRadioButton*>("OptW1"), Qt::LeftButton, {}, QPoint(5, 5));
  Fetch("EGLL");
  EXPECT_EQ(text->toPlainText(), "TAF EGLL 141058Z 1412/1518 24012KT 9999 SCT030\nTEMPO 1412/1418 BKN014");
  QTest::mouseClick(screen->findChild<QRadioButton*>("OptW0"), Qt::LeftButton, {}, QPoint(5, 5));

  const QString noData = "Unable to get weather data\n(unknown location or no available weather data)";
  struct Row {
    const char* code;
    QString shown;
  };
  for (const Row& r : {Row{"LFOK", noData}, Row{"KJFK", "Read data error"}}) {
    Fetch(r.code);
    EXPECT_EQ(text->toPlainText(), r.shown) << r.code;
    EXPECT_TRUE(recorded->text().isEmpty()) << r.code;
    EXPECT_EQ(text->palette().color(QPalette::Text), kInvalidText) << r.code;
  }
  server.Stop();
  Fetch("EGLL");
  EXPECT_EQ(text->toPlainText(), "Invalid URL");
  norvane::testing::SetConnectionState(false);
  qputenv(kWeatherUrlVariable, "http://192.0.2.1/data");  // never contacted: offline
  Fetch("EGLL");
  EXPECT_EQ(text->toPlainText(), "No Internet connection");
}

TEST_F(WeatherUiTest, ButtonWaitsWhileTheRequestRunsAndTheWindowStaysUsable) {
  norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  code->setFocus();
  QTest::keyClicks(code, "KJFK");
  QTest::mouseClick(get, Qt::LeftButton);
  EXPECT_TRUE(screen->busy());
  EXPECT_FALSE(get->isEnabled());
  EXPECT_EQ(text->toPlainText(), "..Getting data..");
  EXPECT_EQ(text->palette().color(QPalette::Text), kValidText);
  QTest::qWait(50);
  // Editing the code abandons the request and re-arms the button.
  QTest::keyClick(code, Qt::Key_Backspace);
  QTest::keyClicks(code, "K");
  EXPECT_FALSE(screen->busy());
  EXPECT_TRUE(get->isEnabled());
  EXPECT_TRUE(text->toPlainText().isEmpty());
  // So does Cancel.
  auto* cancel = screen->findChild<QPushButton*>("CmdCancel");
  EXPECT_FALSE(cancel->isEnabled());
  QTest::mouseClick(get, Qt::LeftButton);
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_FALSE(screen->busy());
  EXPECT_TRUE(get->isEnabled());
  EXPECT_TRUE(text->toPlainText().isEmpty());
  // Closing the window in the middle of a request is safe.
  QTest::mouseClick(get, Qt::LeftButton);
  EXPECT_TRUE(screen->busy());
  screen->close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return screen.isNull(); }, 2000));
}

// ---------------------------------------------------------------------------------------------
// Aviation data links

// Receives what QDesktopServices::openUrl would hand to the browser.
class UrlCatcher : public QObject {
  Q_OBJECT
 public:
  QList<QUrl> urls;
 public slots:
  void open(const QUrl& url) { urls << url; }
};

struct LinksUiTest : ServicesUiTest {
  void SetUp() override {
    ServicesUiTest::SetUp();
    QDesktopServices::setUrlHandler("https", &opened, "open");
    QDesktopServices::setUrlHandler("http", &opened, "open");
    screen = new LinksScreen;
    screen->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(screen));
    list = screen->findChild<QListWidget*>("ListLinks");
    connectButton = screen->findChild<QPushButton*>("cmdConnect");
    title = screen->findChild<QLineEdit*>("TitleBox");
    link = screen->findChild<QLineEdit*>("LinkBox");
    for (int i = 0; i < LinksScreen::kEditButtonCount; ++i)
      buttons[i] = screen->findChild<QPushButton*>(QStringLiteral("cmdEditLink%1").arg(i));
  }
  void TearDown() override {
    QDesktopServices::unsetUrlHandler("https");
    QDesktopServices::unsetUrlHandler("http");
    delete screen.data();
    ServicesUiTest::TearDown();
  }
  void Click(int button) { QTest::mouseClick(buttons[button], Qt::LeftButton); }
  QStringList Titles() const {
    QStringList t;
    for (int i = 0; i < list->count(); ++i) t << list->item(i)->text();
    return t;
  }
  void SelectRow(int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
  }

  UrlCatcher opened;
  QPointer<LinksScreen> screen;
  QListWidget* list = nullptr;
  QPushButton* connectButton = nullptr;
  QLineEdit* title = nullptr;
  QLineEdit* link = nullptr;
  QPushButton* buttons[LinksScreen::kEditButtonCount] = {};
};

TEST_F(LinksUiTest, BrowseAndConnect) {
  EXPECT_TRUE(title->isReadOnly() && link->isReadOnly());  // locked until Add or Edit
  EXPECT_FALSE(buttons[LinksScreen::kSave]->isEnabled());
  SelectRow(4);
  EXPECT_EQ(title->text().toStdString(), App().settings.Links.entries[4].title);
  EXPECT_EQ(link->text().toStdString(), App().settings.Links.entries[4].url);
  // Double click acts as Connect.
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(4)).center());
  ASSERT_EQ(opened.urls.size(), 1);
  EXPECT_EQ(opened.urls[0].toString().toStdString(), App().settings.Links.entries[4].url);
  EXPECT_FALSE(connectButton->isEnabled());  // one click, one page
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->isEnabled(); }, 3000));
  SelectRow(0);
  QTest::mouseClick(connectButton, Qt::LeftButton);
  ASSERT_EQ(opened.urls.size(), 2);
  EXPECT_EQ(opened.urls[1].toString().toStdString(), App().settings.Links.entries[0].url);

  // The connection timer follows the system's state.
  norvane::testing::SetConnectionState(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->text() == "[No Internet connection]"; }, 5000));
  EXPECT_FALSE(connectButton->isEnabled());
  norvane::testing::SetConnectionState(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->text() == "Connect"; }, 5000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->isEnabled(); }, 3000));
}

TEST_F(LinksUiTest, OpensOnlyWebAddresses) {
  for (const char* address : {"file:///etc/passwd", "/etc/passwd", "javascript:alert(1)", "smb://server/share",
                              "mailto:ops@example.com", "ftp://ftp.example.com/"}) {
    SelectRow(0);
    Click(LinksScreen::kEdit);
    link->selectAll();
    QTest::keyClicks(link, address);
    Click(LinksScreen::kSave);
    QTest::mouseClick(connectButton, Qt::LeftButton);
    EXPECT_TRUE(screen->findChild<QLabel*>("lblError")->text().endsWith(address)) << address;
  }
  EXPECT_TRUE(opened.urls.isEmpty());
}

TEST_F(LinksUiTest, EditorAddEditDeleteCancel) {
  // Add with a blank title adds nothing.
  Click(LinksScreen::kAdd);
  EXPECT_FALSE(title->isReadOnly());
  EXPECT_TRUE(title->hasFocus());
  EXPECT_FALSE(list->isEnabled());
  QTest::keyClicks(title, "   ");
  Click(LinksScreen::kSave);
  EXPECT_EQ(list->count(), 14);
  EXPECT_TRUE(title->isReadOnly());

  // Add a real one: sorted in and selected.
  Click(LinksScreen::kAdd);
  QTest::keyClicks(title, " Met Office aviation ");
  link->selectAll();
  QTest::keyClicks(link, "https://www.metoffice.gov.uk/services/transport/aviation");
  Click(LinksScreen::kSave);
  ASSERT_EQ(list->count(), 15);
  EXPECT_EQ(list->currentItem()->text(), "Met Office aviation");
  EXPECT_EQ(list->currentRow(), 12);
  EXPECT_FALSE(buttons[LinksScreen::kAdd]->isEnabled());  // fifteen: the table is full

  // Edit renames and re-sorts; Cancel discards.
  Click(LinksScreen::kEdit);
  QTest::keyClicks(title, "zz edited");
  Click(LinksScreen::kCancel);
  EXPECT_EQ(title->text(), "Met Office aviation");
  Click(LinksScreen::kEdit);
  title->selectAll();
  QTest::keyClicks(title, "Airport weather (UK)");
  Click(LinksScreen::kSave);
  EXPECT_EQ(list->currentRow(), 3);
  EXPECT_EQ(list->currentItem()->text(), "Airport weather (UK)");

  // Delete makes room again.
  Click(LinksScreen::kDelete);
  EXPECT_EQ(list->count(), 14);
  EXPECT_TRUE(buttons[LinksScreen::kAdd]->isEnabled());
  EXPECT_EQ(App().settings.Links, LinkTable::Defaults());

  // The table in memory is what the settings file gets at exit.
  SelectRow(13);
  Click(LinksScreen::kDelete);
  const std::string ini = SerializeSettings(App().settings);
  EXPECT_NE(ini.find("Title12=World time server\r\nLink12=https://www.timeanddate.com/worldclock/\r\n"),
            std::string::npos);
  EXPECT_EQ(ini.find("Title13="), std::string::npos);
}

TEST_F(LinksUiTest, RestoreAsksFirst) {
  SelectRow(0);
  Click(LinksScreen::kDelete);
  Click(LinksScreen::kDelete);
  ASSERT_EQ(list->count(), 12);

  MessageBoxAnswer seen;
  AnswerNextMessageBox(QMessageBox::No, &seen);
  Click(LinksScreen::kRestore);
  EXPECT_EQ(seen.seen, 1);
  EXPECT_EQ(seen.defaultButton, QMessageBox::No);
  EXPECT_EQ(list->count(), 12);

  AnswerNextMessageBox(QMessageBox::Yes, &seen);
  Click(LinksScreen::kRestore);
  EXPECT_EQ(seen.seen, 2);
  EXPECT_EQ(list->count(), 14);
  EXPECT_EQ(App().settings.Links, LinkTable::Defaults());
}

// ---------------------------------------------------------------------------------------------
// Update check and self-update

struct UpdateUiTest : ServicesUiTest {
  void SetUp() override {
    ServicesUiTest::SetUp();
    RegisterServiceScreens(registry);  // installs the update hooks of the shell
    ASSERT_GE(sodium_init(), 0);
    crypto_sign_keypair(publicKey.data(), secretKey);
    norvane::testing::SetTrustedUpdateKey(publicKey);
    auto& r = server.Routes();
    r.Get("/u/NorvaneVerInfo.txt", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(version, "text/plain");
    });
    r.Get("/u/Norvane.new", [this](const httplib::Request&, httplib::Response& res) {
      if (drip) server.Drip(res, 5);
      else res.set_content(newExecutable, "application/octet-stream");
    });
    r.Get("/u/Norvane.manifest", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(manifest, "text/plain");
    });
    r.Get("/u/Norvane.manifest.sig", [this](const httplib::Request&, httplib::Response& res) {
      res.set_content(signature, "application/octet-stream");
    });
    qputenv(kUpdateUrlVariable, QByteArray::fromStdString(server.Start() + "/u"));
    ASSERT_TRUE(folder.isValid());
    executable = folder.filePath("norvane");
    QFile f(executable);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("old executable");
    f.close();
    norvane::testing::SetRunningExecutable(executable);
  }
  // A signed manifest of version 2.33 for this platform naming `file` as the program.
  void Publish(const std::string& file) {
    std::tie(manifest, signature) = test::SignedManifest("2.33", UpdatePlatformTag(), file, secretKey);
  }
  std::string FileText(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : "<missing>";
  }

  void TearDown() override {
    Hooks() = ShellHooks{};
    ServicesUiTest::TearDown();
  }

  ScreenRegistry registry;
  UpdatePublicKey publicKey{};
  unsigned char secretKey[crypto_sign_SECRETKEYBYTES]{};
  const int16_t own = OwnVersionNumber();
  std::string version = VersionText(own);
  std::string newExecutable = "new executable";
  std::string manifest, signature;
  bool drip = false;
  QTemporaryDir folder;
  QString executable;
};

TEST_F(UpdateUiTest, AboutBoxCheck) {
  struct Row {
    std::string version;
    bool online;
    QString shown;
  };
  const Row rows[] = {
      {VersionText(own), true, "No update available"},
      {"10.01", true, "Unable to retrieve version data"},
      {VersionText(int16_t(own - 1)), true, "No update available"},
      {VersionText(own), false, "No internet connection"},
  };
  for (const Row& r : rows) {
    version = r.version;
    norvane::testing::SetConnectionState(r.online);
    AboutDialog about;
    about.show();
    auto* button = about.findChild<QPushButton*>("CmdUpdate");
    auto* label = about.findChild<QLabel*>("LblUpdate");
    ASSERT_TRUE(button && label);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return label->text() != "Checking.."; }, 3000));
    EXPECT_EQ(label->text(), r.shown) << r.version;
    EXPECT_TRUE(button->isEnabled());
    EXPECT_FALSE(about.updateRequested());
  }

  // A newer version: the question; No keeps the box open, Yes asks for the update and closes it.
  norvane::testing::SetConnectionState(true);
  version = "2.33";
  Publish(newExecutable);
  for (auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    AboutDialog about;
    about.show();
    MessageBoxAnswer seen;
    AnswerNextMessageBox(answer, &seen);
    QTest::mouseClick(about.findChild<QPushButton*>("CmdUpdate"), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen.seen == 1; }, 3000));
    EXPECT_NE(seen.text.indexOf(QString::fromStdString(version)), -1) << seen.text.toStdString();
    EXPECT_EQ(about.findChild<QLabel*>("LblUpdate")->text(), "A new version is available");
    EXPECT_EQ(about.updateRequested(), answer == QMessageBox::Yes);
    EXPECT_EQ(about.isVisible(), answer == QMessageBox::No);
  }
}

TEST_F(UpdateUiTest, PackageManagedInstallOffersNoUpdate) {
  norvane::testing::SetRunningExecutable("/usr/bin/env");
  AboutDialog about;
  EXPECT_EQ(about.findChild<QPushButton*>("CmdUpdate"), nullptr);
  EXPECT_EQ(about.findChild<QLabel*>("LblUpdate")->text(),
            "Updates of this installation come through the system's package manager");
}

TEST_F(UpdateUiTest, UpdateDialogReplacesTheExecutableOrSaysItFailed) {
  for (bool good : {false, true}) {
    Publish(good ? newExecutable : "something else");
    UpdateDialog dialog;
    QTimer::singleShot(3000, &dialog, &QDialog::reject);  // safety net
    auto* close = dialog.findChild<QPushButton*>("cmdClose");
    auto* label = dialog.findChild<QLabel*>("LblUpdate");
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      if (label->text() != "Update in progress, please wait.." && !label->text().isEmpty()) close->click();
    });
    poll.start(20);
    dialog.exec();
    EXPECT_EQ(dialog.updated(), good);
    EXPECT_EQ(label->text(), good ? "Update completed..please restart" : "Norvane update has failed");
    EXPECT_EQ(FileText(executable), good ? newExecutable : "old executable");
    EXPECT_EQ(QFile::exists(folder.filePath("Norvane.bak")), good);
    EXPECT_FALSE(QFile::exists(folder.filePath("Norvane.new")));
  }
}

TEST_F(UpdateUiTest, EscapeCancelsADownloadThatNeverEnds) {
  Publish(newExecutable);
  drip = true;  // a byte every 2 s: the 20 s stall timeout never ends it
  norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  UpdateDialog dialog;
  QElapsedTimer clock;
  QTimer::singleShot(800, &dialog, [&] {
    EXPECT_TRUE(dialog.running());
    EXPECT_TRUE(QFile::exists(folder.filePath("Norvane.new")));
    clock.start();
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  });
  QTimer::singleShot(10000, &dialog, [&] {
    ADD_FAILURE() << "still open";
    server.Release();
    QTimer::singleShot(3000, &dialog, [&] { dialog.done(0); });
  });
  dialog.exec();
  EXPECT_LT(clock.elapsed(), 1000);
  EXPECT_FALSE(dialog.updated());
  EXPECT_EQ(FileText(executable), "old executable");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList({"norvane"}));
}

TEST_F(UpdateUiTest, DailyCheckOnTheMenusFirstTick) {
  App().settings.AutoUpdateCheck = 1;
  App().settings.PrevAutoUpdate = "";
  version = "2.33";

  // The start-up step removes the backup a previous update left.
  QFile::copy(executable, folder.filePath("Norvane.bak"));
  Hooks().afterSettingsRead();
  EXPECT_FALSE(QFile::exists(folder.filePath("Norvane.bak")));

  Publish(newExecutable);
  MessageBoxAnswer seen;
  {
    MainMenu menu(registry);
    menu.timer()->stop();
    AnswerNextMessageBox(QMessageBox::No, &seen);
    menu.firstTick();
    EXPECT_EQ(seen.seen, 1);
    EXPECT_EQ(server.Requests(), 3);
    EXPECT_EQ(App().settings.PrevAutoUpdate, TodayText());
    // Saved at once, not only at exit: a program killed meanwhile does not check again today.
    EXPECT_EQ(ReadSettings(App().settingsFile()).PrevAutoUpdate, TodayText());
  }
  // Second start on the same day: no request.
  {
    MainMenu menu(registry);
    menu.timer()->stop();
    menu.firstTick();
    EXPECT_EQ(server.Requests(), 3);
  }
  // Next day, newer version, Yes: the update runs and the program ends.
  App().settings.PrevAutoUpdate = "yesterday";
  MainMenu menu(registry);
  menu.timer()->stop();
  menu.show();
  AnswerNextMessageBox(QMessageBox::Yes, &seen);
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<UpdateDialog*>(QApplication::activeModalWidget());
    if (dialog && dialog->findChild<QLabel*>("LblUpdate")->text() == "Update completed..please restart")
      dialog->findChild<QPushButton*>("cmdClose")->click();
  });
  poll.start(20);
  menu.firstTick();
  EXPECT_EQ(seen.seen, 2);
  EXPECT_EQ(FileText(executable), newExecutable);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !menu.isVisible(); }, 2000));
}

}  // namespace

#include "ServicesUiTest.moc"
