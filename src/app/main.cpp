// Norvane desktop program: start-up, then the main menu's event loop.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>
#include <QLabel>
#include <QLockFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "app/AppContext.hpp"
#include "app/CalculatorScreen.hpp"
#include "app/MainMenu.hpp"
#include "app/Platform.hpp"
#include "app/ScreenRegistry.hpp"
#include "app/StartupProbe.hpp"
#include "app/UiHelpers.hpp"

using namespace norvane;

namespace {

// Message boxes of the start-up refusals and warnings; NORVANE_NONINTERACTIVE (tests, scripts)
// prints only.
void Warn(const QString& text) {
  std::fprintf(stderr, "%s\n", qPrintable(QString(text).replace('\n', ' ')));
  if (!qEnvironmentVariableIsSet("NORVANE_NONINTERACTIVE"))
    QMessageBox::warning(nullptr, QStringLiteral("Norvane"), text);
}

void Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

int TakeScreenshots(MainMenu& menu, const ScreenRegistry& registry, const QString& dir) {
  if (!QDir().mkpath(dir)) {
    std::fprintf(stderr, "norvane: cannot create %s\n", qPrintable(dir));
    return 1;
  }
  menu.firstTick();
  Settle();
  bool ok = menu.grab().save(dir + "/menu.png");
  for (const auto& entry : registry.all()) {
    menu.chooseItem(entry.first);
    CalculatorScreen* screen = menu.openScreen();
    if (!screen) continue;
    Settle();
    screen->prepareScreenshot();
    Settle();
    ok = screen->grab().save(dir + "/" + screen->objectName() + ".png") && ok;
    screen->close();
    Settle();
  }
  std::printf("Screenshots written to %s\n", qPrintable(dir));
  return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Norvane"));
  QApplication::setApplicationVersion(
      QStringLiteral("%1.%2").arg(NORVANE_VERSION_MAJOR).arg(NORVANE_VERSION_MINOR, 2, 10, QChar('0')));
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication::setDesktopFileName(QStringLiteral("org.norvane.Norvane"));
  QIcon icon;
  icon.addFile(QStringLiteral(":/icons/norvane-48.png"));
  icon.addFile(QStringLiteral(":/icons/norvane-256.png"));
  QApplication::setWindowIcon(icon);
  std::setlocale(LC_NUMERIC, "C");  // numbers on screen follow QLocale; the core's own conversions stay "C"

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Norvane aeronautical calculator"));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption shots(QStringLiteral("screenshots"),
                                 QStringLiteral("Write one PNG of the menu and of each screen into DIR, then exit."),
                                 QStringLiteral("DIR"));
  parser.addOption(shots);
  const QCommandLineOption night(QStringLiteral("night"), QStringLiteral("With --screenshots: in the night colours."));
  parser.addOption(night);
  parser.process(app);
  const bool screenshotMode = parser.isSet(shots);

  // Screenshots never touch the user's settings: they run in a scratch program folder.
  QTemporaryDir scratch;
  if (screenshotMode && !qEnvironmentVariableIsSet("NORVANE_APP_DIR"))
    qputenv("NORVANE_APP_DIR", scratch.path().toLocal8Bit());

  AppContext& ctx = App();
  ctx.appPath = ResolveAppPath(QCoreApplication::applicationDirPath().toStdString());
  ctx.decimalSep = LocaleDecimalSep();

  ScreenRegistry registry;
  RegisterAllScreens(registry);  // also installs the services' start-up hooks

  // One instance per program folder: two would overwrite each other's settings at exit.
  QLockFile lock(Q(ctx.appPath) + QStringLiteral(".Norvane.lock"));
  if (!screenshotMode && !lock.tryLock(0)) {
    Warn(QStringLiteral("Another instance of Norvane is already running\nThe program will not start"));
    return 1;
  }

  const std::string settingsError = LoadSettings(ctx);
  if (!settingsError.empty()) Warn(Q(settingsError) + QLatin1Char('\n') + ctx.settingsNotice);
  if (Hooks().afterSettingsRead) Hooks().afterSettingsRead();
  if (screenshotMode) {  // the colours asked for, whatever the settings say (they are not written)
    ctx.settings.Colours = parser.isSet(night) ? 1 : 0;
    UseColours(parser.isSet(night));
  }

  MainMenu menu(registry);
  menu.placeAt(QPoint(ctx.settings.IniLeft / 15, ctx.settings.IniTop / 15));

  const ShellHooks& h = Hooks();
  if (ctx.settings.DBPath.empty() && h.defaultDatabasePath) ctx.settings.DBPath = h.defaultDatabasePath();
  if (!h.checkDatabase || !h.checkDatabase(ctx.settings.DBPath)) {
    // A file that is merely missing (a disk not plugged in) stays named; a refused one is dropped.
    if (!h.databaseMayReturn || !h.databaseMayReturn()) ctx.settings.DBPath.clear();
    menu.refreshDatabaseLabel(QObject::tr("No active Waypoint Database"));
  }

  std::unique_ptr<StartupProbe> probe;
  bool firstTickFinished = false;
  if (StartupProbe::Requested() && !screenshotMode) {
    probe = std::make_unique<StartupProbe>(&menu, [&firstTickFinished] { return firstTickFinished; });
    QObject::connect(&menu, &MainMenu::firstTickFinished, probe.get(), [&] {
      firstTickFinished = true;
      probe->check();
    });
  }

  menu.show();
  if (screenshotMode) return TakeScreenshots(menu, registry, parser.value(shots));
  return app.exec();
}
