#include "waypoints/NavDBShell.hpp"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <filesystem>

#include "app/AppContext.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

NavDatabase& ActiveNavDB() {
  static NavDatabase db;
  return db;
}

bool NavDBActive() { return ActiveNavDB().Loaded(); }

namespace {
class DatabaseStateFilter : public QObject {
 public:
  DatabaseStateFilter(QAbstractButton* button, QString tip) : QObject(button), button_(button), tip_(std::move(tip)) {}
  void update() {
    const bool active = NavDBActive();
    button_->setEnabled(active);
    button_->setToolTip(active ? tip_ : QCoreApplication::translate("NavDB", kNoDatabaseText));
  }

 protected:
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::Show || e->type() == QEvent::WindowActivate) update();
    return false;
  }

 private:
  QAbstractButton* button_;
  QString tip_;
};
}  // namespace

void EnableWithDatabase(QWidget* screen, QAbstractButton* button, const QString& tip) {
  auto* filter = new DatabaseStateFilter(button, tip);
  screen->installEventFilter(filter);
  filter->update();
}

std::string SampleDatabasePath(const std::string& executableDir) {
  namespace fs = std::filesystem;
  const fs::path dir = fs::path(std::u8string(executableDir.begin(), executableDir.end()));
  for (const fs::path& candidate : {dir / "sample.dat", dir / ".." / "share" / "norvane" / "sample.dat"}) {
    std::error_code ec;
    if (fs::is_regular_file(candidate, ec)) {
      const std::u8string s = candidate.lexically_normal().u8string();
      return std::string(s.begin(), s.end());
    }
  }
  return {};
}

void InstallNavDBHooks() {
  ShellHooks& h = Hooks();
  h.checkDatabase = [](const std::string& path) {
    NavDatabase& db = ActiveNavDB();
    db.SetDBPath(path);
    return db.CheckNavDB();
  };
  h.loadDatabase = [] {
    NavDatabase& db = ActiveNavDB();
    if (db.DBError()) return false;  // the start-up check failed
    return db.LoadNavDB();
  };
  h.openDatabase = [](const std::string& path) {
    NavDatabase& db = ActiveNavDB();
    db.SetDBPath(path);
    return db.CheckNavDB() && db.LoadNavDB();
  };
  h.databaseDisplayName = []() -> QString {
    const NavDatabase& db = ActiveNavDB();
    return db.DBError() ? QString() : Q(db.GetDBDisplayName());
  };
  h.databaseProblem = []() -> QString {
    const NavDatabase& db = ActiveNavDB();
    if (!db.DBError()) return {};
    const std::string file = db.GetDBFileName();
    return Q(file.empty() ? db.StatusText() : file + ": " + db.StatusText());
  };
  h.databaseMayReturn = [] {
    const NavDBStatus s = ActiveNavDB().Status();
    return s == NavDBStatus::NotFound || s == NavDBStatus::ReadError;
  };
  h.defaultDatabasePath = [] { return SampleDatabasePath(S(QCoreApplication::applicationDirPath())); };
}

}  // namespace norvane
