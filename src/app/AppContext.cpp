#include "app/AppContext.hpp"

#include <QCoreApplication>

#include "app/Platform.hpp"

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
    ctx.settingsNotice = QCoreApplication::translate("Settings", "The settings file could not be read; your changes are not saved");
  else if (IsReadOnlyFile(ctx.settingsFile()))
    ctx.settingsNotice = QCoreApplication::translate("Settings", "The settings file is read-only; your changes are not saved");
  else
    ctx.settingsNotice.clear();
  return error;
}

ShellHooks& Hooks() {
  static ShellHooks hooks;
  return hooks;
}

}  // namespace norvane
