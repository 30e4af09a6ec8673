// The links screen and the update dialogs driven with real key and mouse events, against an HTTP
// server on 127.0.0.1. Wiring only: the texts and verdicts behind them are tested in the core.
#include <QApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMessageBox>
#include <QTimer>

#include "app/AboutDialog.hpp"
#include "app/MainMenu.hpp"
#include "app/Platform.hpp"
#include "app/UiHelpers.hpp"
#include "online/Internet.hpp"
#include "online/LinksScreen.hpp"
#include "online/SelfUpdate.hpp"
#include "online/UpdateInfo.hpp"
#include "online/UpdateUi.hpp"
#include "support/LocalHttpServer.hpp"
#include "support/UiTest.hpp"

using namespace norvane;
using namespace norvane::test;

namespace {

// Answers the next message box with `answer`, counting the boxes and keeping what the last showed.
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
    poll->deleteLater();
    poll->stop();
    seen->text = box->text();
    seen->defaultButton = box->standardButton(box->defaultButton());
    ++seen->seen;
    box->button(answer)->click();
  });
  poll->start();
}

struct OnlineUiTest : UiFixture {
  void SetUp() override {
    UiFixture::SetUp();
    ASSERT_TRUE(appDir.isValid());
    App().appPath = appDir.path().toStdString() + "/";  // a menu that closes writes Norvane.ini here
    norvane::testing::SetConnectionState(true);
    norvane::testing::SetStallTimeout(std::chrono::milliseconds(300));
  }
  void TearDown() override {
    norvane::testing::SetConnectionState(std::nullopt);
    norvane::testing::SetStallTimeout(std::chrono::seconds(20));
    norvane::testing::SetRunningExecutable({});
  }
  QTemporaryDir appDir;
};

// Aviation data links

// Receives what QDesktopServices::openUrl would hand to the browser.
class UrlCatcher : public QObject {
  Q_OBJECT
 public:
  QStringList urls;
 public slots:
  void open(const QUrl& url) { urls << url.toString(); }
};

struct LinksUiTest : OnlineUiTest {
  void SetUp() override {
    OnlineUiTest::SetUp();
    for (const char* scheme : {"http", "https"}) QDesktopServices::setUrlHandler(scheme, &opened, "open");
    screen = new LinksScreen;
    Show(*screen);
    list = Find<QListWidget>(*screen, "ListLinks");
    connectButton = Find<QPushButton>(*screen, "cmdConnect");
    title = Find<QLineEdit>(*screen, "TitleBox");
    link = Find<QLineEdit>(*screen, "LinkBox");
  }
  void TearDown() override {
    for (const char* scheme : {"http", "https"}) QDesktopServices::unsetUrlHandler(scheme);
    delete screen;
    OnlineUiTest::TearDown();
  }
  void Press(int button) { Click(*screen, QStringLiteral("cmdEditLink%1").arg(button)); }
  bool Enabled(int button) {
    return Find<QPushButton>(*screen, QStringLiteral("cmdEditLink%1").arg(button))->isEnabled();
  }
  QPoint At(int row) { return list->visualItemRect(list->item(row)).center(); }
  void SelectRow(int row) { QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, At(row)); }
  QString Url(int i) { return QString::fromStdString(App().settings.Links.entries[i].url); }

  UrlCatcher opened;
  LinksScreen* screen = nullptr;
  QListWidget* list = nullptr;
  QPushButton* connectButton = nullptr;
  QLineEdit* title = nullptr;
  QLineEdit* link = nullptr;
};

TEST_F(LinksUiTest, BrowseAndConnect) {
  EXPECT_TRUE(title->isReadOnly() && link->isReadOnly());  // locked until Add or Edit
  EXPECT_FALSE(Enabled(LinksScreen::kSave));
  SelectRow(4);
  EXPECT_EQ(title->text().toStdString(), App().settings.Links.entries[4].title);
  EXPECT_EQ(link->text(), Url(4));
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, At(4));  // double click acts as Connect
  EXPECT_EQ(opened.urls, QStringList{Url(4)});
  EXPECT_FALSE(connectButton->isEnabled());  // one click, one page
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->isEnabled(); }, 3000));
  SelectRow(0);
  QTest::mouseClick(connectButton, Qt::LeftButton);
  EXPECT_EQ(opened.urls, QStringList({Url(4), Url(0)}));

  // The connection timer follows the system's state.
  norvane::testing::SetConnectionState(false);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !connectButton->isEnabled(); }, 5000));
  norvane::testing::SetConnectionState(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return connectButton->isEnabled(); }, 5000));
}

TEST_F(LinksUiTest, OpensOnlyWebAddresses) {
  for (const char* address : {"/etc/passwd", "ftp://ftp.example.com/", "https:///nohost"}) {
    SelectRow(0);
    Press(LinksScreen::kEdit);
    link->selectAll();
    QTest::keyClicks(link, address);
    Press(LinksScreen::kSave);
    QTest::mouseClick(connectButton, Qt::LeftButton);
    EXPECT_TRUE(Text(*screen, "lblError").endsWith(address)) << address;
  }
  EXPECT_TRUE(opened.urls.isEmpty());
}

TEST_F(LinksUiTest, EditorAddEditDeleteCancel) {
  const int defaults = LinkTable::Defaults().count;
  Press(LinksScreen::kAdd);  // the table's own rules (trimming, order) are in LinkTableTest
  EXPECT_FALSE(title->isReadOnly());
  EXPECT_TRUE(title->hasFocus());
  EXPECT_FALSE(list->isEnabled());
  QTest::keyClicks(title, "Met Office aviation");
  Press(LinksScreen::kSave);
  ASSERT_EQ(list->count(), defaults + 1);
  EXPECT_TRUE(title->isReadOnly());
  EXPECT_EQ(list->currentItem()->text(), "Met Office aviation");

  Press(LinksScreen::kEdit);  // Cancel discards, Save renames and re-sorts
  QTest::keyClicks(title, "zz edited");
  Press(LinksScreen::kCancel);
  EXPECT_EQ(title->text(), "Met Office aviation");
  Press(LinksScreen::kEdit);
  title->selectAll();
  QTest::keyClicks(title, "Zz last");
  Press(LinksScreen::kSave);
  EXPECT_EQ(list->currentRow(), defaults);
  EXPECT_EQ(list->currentItem()->text(), "Zz last");

  Press(LinksScreen::kDelete);
  EXPECT_TRUE(Enabled(LinksScreen::kAdd));
  EXPECT_EQ(App().settings.Links, LinkTable::Defaults());  // the table in memory is what the file gets
}

TEST_F(LinksUiTest, RestoreAsksFirst) {
  SelectRow(0);
  Press(LinksScreen::kDelete);
  const int kept = list->count();
  MessageBoxAnswer seen;
  for (auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    AnswerNextMessageBox(answer, &seen);
    Press(LinksScreen::kRestore);
    EXPECT_EQ(seen.defaultButton, QMessageBox::No);
    EXPECT_EQ(list->count(), answer == QMessageBox::No ? kept : kept + 1);
  }
  EXPECT_EQ(seen.seen, 2);
  EXPECT_EQ(App().settings.Links, LinkTable::Defaults());
}

// Update check and self-update

struct UpdateUiTest : OnlineUiTest {
  void SetUp() override {
    OnlineUiTest::SetUp();
    RegisterOnlineScreens(registry);  // installs the update hooks of the shell
    norvane::testing::SetRunningExecutable(site.executable);
    site.version = VersionText(OwnVersionNumber());
  }
  void TearDown() override {
    Hooks() = ShellHooks{};
    OnlineUiTest::TearDown();
  }
  // Version 2.33 offered, its manifest describing `file` (the served one or another).
  void Publish(const std::string& file) {
    site.version = "2.33";
    site.Publish(233, UpdatePlatformTag(), newExecutable, file);
  }
  ScreenRegistry registry;
  UpdateSite site;
  const std::string newExecutable = "new executable";
};

TEST_F(UpdateUiTest, AboutBoxCheck) {
  for (bool online : {true, false}) {  // the server's verdict, or the box's own offline text
    norvane::testing::SetConnectionState(online);
    AboutDialog about;
    about.show();
    Click(about, "CmdUpdate");
    const QString shown = online ? VerdictText(ServerVersionVerdict::NoUpdate) : "No internet connection";
    EXPECT_TRUE(QTest::qWaitFor([&] { return Text(about, "LblUpdate") == shown; }, 3000))
        << Text(about, "LblUpdate").toStdString();
    EXPECT_TRUE(Find<QPushButton>(about, "CmdUpdate")->isEnabled());
    EXPECT_FALSE(about.updateRequested());
  }
  // A newer version: the question; No keeps the box open, Yes asks for the update and closes it.
  norvane::testing::SetConnectionState(true);
  Publish(newExecutable);
  for (auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    AboutDialog about;
    about.show();
    MessageBoxAnswer seen;
    AnswerNextMessageBox(answer, &seen);
    Click(about, "CmdUpdate");
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen.seen == 1; }, 3000));
    EXPECT_TRUE(seen.text.contains("2.33")) << seen.text.toStdString();
    EXPECT_EQ(Text(about, "LblUpdate"), VerdictText(ServerVersionVerdict::NewVersion));
    EXPECT_EQ(about.updateRequested(), answer == QMessageBox::Yes);
    EXPECT_EQ(about.isVisible(), answer == QMessageBox::No);
  }
}

TEST_F(UpdateUiTest, PackageManagedInstallOffersNoUpdate) {
  norvane::testing::SetRunningExecutable("/usr/bin/env");
  AboutDialog about;
  EXPECT_EQ(about.findChild<QPushButton*>("CmdUpdate"), nullptr);
  EXPECT_TRUE(Text(about, "LblUpdate").contains("package manager"));
}

TEST_F(UpdateUiTest, UpdateDialogReplacesTheExecutableOrSaysItFailed) {
  for (bool good : {false, true}) {
    Publish(good ? newExecutable : "something else");
    UpdateDialog dialog;
    QTimer::singleShot(3000, &dialog, &QDialog::reject);  // safety net
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      if (!dialog.running() && !Text(dialog, "LblUpdate").isEmpty()) Click(dialog, "cmdClose");
    });
    poll.start(20);
    dialog.exec();
    EXPECT_EQ(dialog.updated(), good);
    EXPECT_EQ(Text(dialog, "LblUpdate").contains("failed"), !good);
    EXPECT_EQ(site.Text("norvane"), good ? newExecutable : "old executable");
  }
}

TEST_F(UpdateUiTest, EscapeCancelsADownloadThatNeverEnds) {
  Publish(newExecutable);
  site.drip = true;  // a byte every 2 s: the 20 s stall timeout never ends it
  norvane::testing::SetStallTimeout(std::chrono::seconds(20));
  UpdateDialog dialog;
  QElapsedTimer clock;
  QTimer::singleShot(800, &dialog, [&] {
    EXPECT_TRUE(dialog.running());
    EXPECT_TRUE(QFile::exists(site.folder.filePath("Norvane.new")));
    clock.start();
    QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  });
  QTimer::singleShot(10000, &dialog, [&] {
    ADD_FAILURE() << "still open";
    site.server.Release();
    QTimer::singleShot(3000, &dialog, [&] { dialog.done(0); });
  });
  dialog.exec();
  EXPECT_LT(clock.elapsed(), 1000);
  EXPECT_FALSE(dialog.updated());
  EXPECT_EQ(site.Text("norvane"), "old executable");
  EXPECT_EQ(site.Files(), QStringList({"norvane"}));  // the partial download removed
}

TEST_F(UpdateUiTest, DailyCheckOnTheMenusFirstTick) {
  App().settings.AutoUpdateCheck = 1;
  App().settings.PrevAutoUpdate = "";
  // The start-up step removes the backup a previous update left.
  QFile::copy(site.executable, site.folder.filePath("Norvane.bak"));
  Hooks().afterSettingsRead();
  EXPECT_EQ(site.Files(), QStringList({"norvane"}));

  Publish(newExecutable);
  MessageBoxAnswer seen;
  {
    MainMenu menu(registry);
    menu.timer()->stop();
    AnswerNextMessageBox(QMessageBox::No, &seen);
    menu.firstTick();
    EXPECT_EQ(seen.seen, 1);
    // Saved at once, not only at exit: a program killed meanwhile does not check again today.
    EXPECT_EQ(ReadSettings(App().settingsFile()).PrevAutoUpdate, TodayText());
  }
  // Next day, Yes: the update runs and the program ends.
  App().settings.PrevAutoUpdate = "yesterday";
  MainMenu menu(registry);
  menu.timer()->stop();
  menu.show();
  AnswerNextMessageBox(QMessageBox::Yes, &seen);
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<UpdateDialog*>(QApplication::activeModalWidget());
    if (dialog && dialog->updated()) Click(*dialog, "cmdClose");
  });
  poll.start(20);
  menu.firstTick();
  EXPECT_EQ(seen.seen, 2);
  EXPECT_EQ(site.Text("norvane"), newExecutable);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !menu.isVisible(); }, 2000));
}

}  // namespace

#include "OnlineUiTest.moc"
