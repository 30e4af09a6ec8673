#include "app/AppContext.hpp"

#include <QApplication>

#include "app/MainMenu.hpp"
#include "app/Platform.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

AppContext& App() {
  static AppContext ctx;
  return ctx;
}

std::string LoadSettings(AppContext& ctx) {
  std::string error;
  ctx.settings = ReadSettings(ctx.settingsFile(), &error);
  ctx.keepSettingsFile = !error.empty();
  if (ctx.keepSettingsFile)
    ctx.settingsNotice =
        QCoreApplication::translate("Settings", "The settings file could not be read; your changes are not saved");
  else if (IsReadOnlyFile(ctx.settingsFile()))
    ctx.settingsNotice =
        QCoreApplication::translate("Settings", "The settings file is read-only; your changes are not saved");
  else
    ctx.settingsNotice.clear();
  UseColours(ctx.settings.Colours == 1);
  return error;
}

void UseColours(bool night) {
  App().night = night;
  QApplication::setPalette(night ? NightPalette() : DayPalette());
  if (App().menu) App().menu->applyColours();
}

ShellHooks& Hooks() {
  static ShellHooks hooks;
  return hooks;
}

bool ChooseDatabase(QWidget* parent) {
  const OpenFileResult r = OpenFileDialog(parent, QCoreApplication::translate("Database", "Default Waypoint Database"),
                                          QString(), QCoreApplication::translate("Database", "Database file (*.dat)"));
  if (r.filePath.isEmpty()) return false;
  const ShellHooks& h = Hooks();
  const bool ok = h.openDatabase && h.openDatabase(S(r.filePath));
  if (ok)
    App().settings.DBPath = S(r.filePath);
  else
    App().settings.DBPath.clear();
  return true;
}

}  // namespace norvane
