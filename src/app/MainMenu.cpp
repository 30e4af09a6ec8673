#include "app/MainMenu.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdio>

#include "app/AboutDialog.hpp"
#include "app/AppContext.hpp"
#include "app/CalculatorScreen.hpp"
#include "app/InputBox.hpp"
#include "app/UiHelpers.hpp"

namespace norvane {

const std::array<const char*, MainMenu::kItemCount> MainMenu::kCaptions = {
    "Atmosphere data",          "Speed calculations",      "Changeover level",
    "Descent calculator",       "Density altitude",        "Wind calculations",
    "Turn parameters",          "Tracks and distance",     "Point from track-distance",
    "Radial intersection",      "Magnetic variation",      "Sunrise and sunset",
    "Unit conversions",         "Stall speed calculation", "Racetrack calculator",
    "Holding entry calculator", "Tiny math calculator",    "Airport weather",
    "Aviation data links",      "Options and default",     "Time, speed, distance and fuel",
};

namespace {

// Items 0-9 form the left column and 10-19 the right one; later items take full-width rows below.
constexpr int kColumnRows = 10;
constexpr int kColumnItems = 2 * kColumnRows;
// An item's place in reading order, row by row (0, 10, 1, 11, ... 9, 19, 20), and back.
constexpr int ReadingPlace(int k) { return k < kColumnItems ? (k % kColumnRows) * 2 + k / kColumnRows : k; }
constexpr int ItemAtReadingPlace(int p) { return p < kColumnItems ? p / 2 + (p % 2) * kColumnRows : p; }

}  // namespace

// One menu entry: a coloured frame (menushape<k>) holding its caption (menutitle<k>).
class MenuItem : public QFrame {
 public:
  MenuItem(int index, const QString& caption, QWidget* parent) : QFrame(parent), index_(index) {
    setObjectName(QStringLiteral("menushape%1").arg(index));
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setCursor(Qt::PointingHandCursor);
    auto* l = new QHBoxLayout(this);
    l->setContentsMargins(8, 4, 8, 4);
    title_ = new QLabel(caption, this);
    title_->setObjectName(QStringLiteral("menutitle%1").arg(index));
    l->addWidget(title_);
    setMinimumHeight(title_->sizeHint().height() + 12);
    setMouseTracking(true);
    title_->setMouseTracking(true);
  }
  int index() const { return index_; }
  QLabel* title() const { return title_; }
  void setColor(const QColor& c) {
    color_ = c;
    SetBackground(this, c);
    SetBackground(title_, c);
    // By night the outline is dim: in the text colour it would draw a bright box round every item.
    setForegroundRole(Colours().night ? QPalette::Light : QPalette::NoRole);
  }
  QColor color() const { return color_; }

 private:
  int index_;
  QLabel* title_;
  QColor color_;
};

MainMenu::MainMenu(const ScreenRegistry& registry, QWidget* parent) : QWidget(parent), registry_(registry) {
  setObjectName("frmMenu");
  setWindowTitle("Norvane");
  setFocusPolicy(Qt::StrongFocus);
  App().menu = this;

  auto* root = new QVBoxLayout(this);
  root->setSizeConstraint(QLayout::SetFixedSize);
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(6);
  grid->setVerticalSpacing(4);
  for (int k = 0; k < kItemCount; ++k) {
    auto* item = new MenuItem(k, tr(kCaptions[k]), this);
    item->setMinimumWidth(200);
    item->installEventFilter(this);
    item->title()->installEventFilter(this);
    if (!registry_.has(k)) {
      item->setToolTip(tr("Not available in this version"));
      item->title()->setEnabled(false);
      item->setCursor(Qt::ArrowCursor);
    }
    items_[k] = item;
    if (k < kColumnItems)
      grid->addWidget(item, k % kColumnRows, k / kColumnRows);
    else
      grid->addWidget(item, kColumnRows + k - kColumnItems, 0, 1, 2);
    item->setColor(Colours().menuIdle);
  }
  root->addLayout(grid);

  auto* bottom = new QHBoxLayout;
  auto* frameDB = new QGroupBox(tr("Set waypoint database"), this);
  frameDB->setObjectName("FrameNavDB");
  auto* dbLayout = new QHBoxLayout(frameDB);
  labelDB_ = new QLabel(tr("No active Waypoint Database"), frameDB);
  labelDB_->setObjectName("LabelDB");
  labelDB_->setCursor(Qt::PointingHandCursor);
  labelDB_->setToolTip(tr("Click to choose the waypoint database"));
  labelDB_->installEventFilter(this);
  dbLayout->addWidget(labelDB_);
  bottom->addWidget(frameDB, 1);
  auto* frameVersion = new QGroupBox(this);
  frameVersion->setObjectName("FrameVersion");
  auto* vLayout = new QHBoxLayout(frameVersion);
  labelVersion_ = new QLabel(
      tr("Version %1.%2").arg(NORVANE_VERSION_MAJOR).arg(NORVANE_VERSION_MINOR, 2, 10, QChar('0')), frameVersion);
  labelVersion_->setObjectName("LabelVersion");
  labelVersion_->setToolTip(tr("Information and update"));
  labelVersion_->setCursor(Qt::PointingHandCursor);
  labelVersion_->installEventFilter(this);
  vLayout->addWidget(labelVersion_);
  bottom->addWidget(frameVersion);
  root->addLayout(bottom);

  setMouseTracking(true);
  timer_ = new QTimer(this);
  timer_->setObjectName("Norvane_Timer");
  timer_->setInterval(100);
  connect(timer_, &QTimer::timeout, this, &MainMenu::onTick);
  timer_->start();
  lastMenuPos_ = pos();
  highlight(0, true);  // the keyboard works from the start: arrows, Tab and Enter
}

MainMenu::~MainMenu() {
  if (App().menu == this) App().menu = nullptr;
}

void MainMenu::setItemColor(int k, const QColor& c) {
  if (k >= 0 && k < kItemCount) items_[k]->setColor(c);
}

QColor MainMenu::itemColor(int k) const { return items_[k]->color(); }

void MainMenu::applyColours() {
  for (int k = 0; k < kItemCount; ++k)
    setItemColor(k, k == currentForm_ ? Colours().menuOpen
                    : k == hiIndex_   ? Colours().menuHighlight
                                      : Colours().menuIdle);
}

void MainMenu::highlight(int k, bool byKeyboard) {
  if (hiIndex_ >= 0 && hiIndex_ != k && hiIndex_ != currentForm_) setItemColor(hiIndex_, Colours().menuIdle);
  hiIndex_ = k;
  hiByMouse_ = !byKeyboard;
  if (k >= 0 && k != currentForm_) setItemColor(k, Colours().menuHighlight);
}

void MainMenu::chooseItem(int k) {
  if (k < 0 || k >= kItemCount || lastPressNotLeft_ || k == currentForm_) return;
  if (!registry_.has(k)) return;  // not built in this version: the item opens nothing
  if (screen_) screen_->close();  // its unload returns its item to idle
  highlight(k, true);
  setItemColor(k, Colours().menuOpen);
  currentForm_ = k;
  if ((k >= 7 && k <= 11) || k == 19) labelDB_->setEnabled(false);
  screen_ = registry_.create(k);
  connect(screen_, &CalculatorScreen::unloaded, this, &MainMenu::onScreenUnloaded);
  placeScreen();
  if (!minimized_) {
    screen_->show();
    placeScreen();  // again with the real frame, now that the window system has decorated it
    // The keyboard goes on in the screen, in its first box (else its first control).
    screen_->activateWindow();
    QWidget* first = nullptr;
    for (QWidget* w = screen_->nextInFocusChain(); w && w != screen_; w = w->nextInFocusChain()) {
      if (!w->isVisible() || !w->isEnabled() || !(w->focusPolicy() & Qt::TabFocus)) continue;
      if (!first) first = w;
      if (qobject_cast<InputBox*>(w)) {
        first = w;
        break;
      }
    }
    if (first) first->setFocus(Qt::TabFocusReason);
  }
  emit screenOpened(k);
}

void MainMenu::placeScreen() {
  // Beside the menu where it fits, wholly on the menu's screen.
  const QRect menuFrame = frameGeometry();
  QScreen* where = QGuiApplication::screenAt(menuFrame.center());
  if (!where) where = screen();
  const QSize decoration =
      screen_->isVisible() ? screen_->frameGeometry().size() - screen_->size() : menuFrame.size() - size();
  screen_->adjustSize();
  const QSize frame = screen_->size() + decoration;
  screen_->move(PlaceBeside(menuFrame, frame, where->availableGeometry()));
}

void MainMenu::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  if (placeOnShow_) placeAt(pos());  // again with the window frame, now that it has one
}

void MainMenu::placeAt(const QPoint& topLeft) {
  placeOnShow_ = !isVisible();
  ensurePolished();  // its final size, before it is shown
  adjustSize();
  move(topLeft);
  // Kept where it was left when a screen shows it whole; else moved wholly onto the screen that
  // needs the shortest move (the one showing most of it, or nearest to it).
  const QRect frame(topLeft, frameGeometry().size());
  QScreen* best = nullptr;
  qint64 bestDistance = -1;
  for (QScreen* s : QGuiApplication::screens()) {
    const QRect area = s->availableGeometry();
    if (area.contains(frame)) return;
    const QPoint d = ClampOnto(topLeft, frame.size(), area) - topLeft;
    const qint64 distance = qint64(d.x()) * d.x() + qint64(d.y()) * d.y();
    if (bestDistance < 0 || distance < bestDistance) {
      best = s;
      bestDistance = distance;
    }
  }
  if (best) move(ClampOnto(topLeft, frame.size(), best->availableGeometry()));
}

void MainMenu::onScreenUnloaded(int k) {
  setItemColor(k, Colours().menuIdle);
  if (currentForm_ == k) {
    currentForm_ = -1;
    screen_ = nullptr;
  }
  labelDB_->setEnabled(true);
  if (closing_) return;
  // The keyboard comes back to the menu, on the item of the screen just closed.
  highlight(k, true);
  activateWindow();
  setFocus(Qt::OtherFocusReason);
}

void MainMenu::applySynchronize() { timer_->setInterval(App().settings.Synchronize == 1 ? 20 : 100); }

void MainMenu::refreshDatabaseLabel(const QString& failureText) {
  const ShellHooks& h = Hooks();
  QString name = h.databaseDisplayName ? h.databaseDisplayName() : QString();
  labelDB_->setText(name.isEmpty() ? failureText : name);
  const QString why = name.isEmpty() && h.databaseProblem ? h.databaseProblem() : QString();
  labelDB_->setToolTip(tr("Click to choose the waypoint database") +
                       (why.isEmpty() ? QString() : QLatin1Char('\n') + why));
  labelDB_->repaint();
}

void MainMenu::firstTick() {
  if (firstTickDone_) return;
  firstTickDone_ = true;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const ShellHooks& h = Hooks();
  const bool loaded = h.loadDatabase && h.loadDatabase();
  if (!loaded && !(h.databaseMayReturn && h.databaseMayReturn())) App().settings.DBPath.clear();
  refreshDatabaseLabel(tr("No waypoint DB"));
  bool quit = false;
  if (h.firstTickUpdateCheck) {
    QApplication::restoreOverrideCursor();
    quit = h.firstTickUpdateCheck(this);
    QApplication::setOverrideCursor(Qt::WaitCursor);
  }
  QApplication::restoreOverrideCursor();
  applySynchronize();
  emit firstTickFinished();
  if (quit) QTimer::singleShot(0, this, &QWidget::close);
}

void MainMenu::paintEvent(QPaintEvent* e) {
  QWidget::paintEvent(e);
  // The first tick's tasks (the database load) start as soon as the menu is on screen rather
  // than a whole timer interval later; the timer stays the way in for a menu never painted. A
  // stopped timer means the first tick is left to the caller.
  if (!firstTickDone_ && !firstTickQueued_) {
    firstTickQueued_ = true;
    QTimer::singleShot(0, this, [this] {
      if (timer_->isActive() && !firstTickDone_) onTick();
    });
  }
}

void MainMenu::onTick() {
  if (!firstTickDone_) {
    firstTick();
    return;
  }
  if (minimized_) return;
  // The cursor left the items: a mouse highlight returns to idle. A keyboard highlight stays, so
  // that the keyboard works wherever the mouse pointer happens to rest.
  if (hiIndex_ >= 0 && hiByMouse_) {
    QWidget* under = QApplication::widgetAt(QCursor::pos());
    bool overItem = false;
    for (MenuItem* item : items_)
      if (under == item || under == item->title()) overItem = true;
    if (!overItem) {
      if (hiIndex_ != currentForm_) setItemColor(hiIndex_, Colours().menuIdle);
      hiIndex_ = -1;
    }
  }
  // Keep the open screen attached to the menu.
  const QPoint now = pos();
  if (App().settings.Synchronize == 1 && screen_ && now != lastMenuPos_) {
    screen_->move(screen_->pos() + (now - lastMenuPos_));
    // Never carried off the menu's screen, nor over the menu: placed beside it again then.
    QScreen* where = QGuiApplication::screenAt(frameGeometry().center());
    const QRect moved = screen_->frameGeometry();
    if (where && (!where->availableGeometry().contains(moved) || moved.intersects(frameGeometry()))) placeScreen();
  }
  lastMenuPos_ = now;
}

bool MainMenu::focusNextPrevChild(bool next) {
  // The menu has no controls to tab between: Tab and Shift+Tab walk the items like Down and Up.
  if (hiIndex_ < 0)
    highlight(currentForm_ == 0 ? 1 : 0, true);
  else
    step(next ? Qt::Key_Down : Qt::Key_Up);
  return true;
}

void MainMenu::keyPressEvent(QKeyEvent* e) {
  const int key = e->key();
  if (key == Qt::Key_Home && hiIndex_ < 0) {  // a way in for the keyboard
    highlight(currentForm_ == 0 ? 1 : 0, true);
    return;
  }
  if (hiIndex_ < 0) {
    QWidget::keyPressEvent(e);
    return;
  }
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      lastPressNotLeft_ = false;
      chooseItem(hiIndex_);
      return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
      step(key);
      return;
    default:
      QWidget::keyPressEvent(e);
      return;
  }
}

void MainMenu::step(int key) {
  // Up and Down walk the items in index order and wrap around at both ends; Left and Right walk
  // them in reading order (so Right from item 15 reaches item 6) and stop at the first and last.
  const int last = kItemCount - 1;
  const int old = hiIndex_;
  int k = old;
  switch (key) {
    case Qt::Key_Up:
      k = old == 0 ? last : old - 1;
      break;
    case Qt::Key_Down:
      k = old == last ? 0 : old + 1;
      break;
    case Qt::Key_Left:
    case Qt::Key_Right: {
      const int place = ReadingPlace(old) + (key == Qt::Key_Right ? 1 : -1);
      if (place < 0 || place > last) return;
      k = ItemAtReadingPlace(place);
      break;
    }
    default:
      return;
  }
  if (old != currentForm_) setItemColor(old, Colours().menuIdle);
  hiIndex_ = k;
  hiByMouse_ = false;
  if (k != currentForm_) setItemColor(k, Colours().menuHighlight);
}

bool MainMenu::eventFilter(QObject* watched, QEvent* event) {
  if (watched == labelDB_ && event->type() == QEvent::MouseButtonRelease) {
    if (labelDB_->isEnabled()) chooseDatabase();
    return true;
  }
  if (watched == labelVersion_ && event->type() == QEvent::MouseButtonRelease) {
    showAbout();
    return true;
  }
  auto* w = qobject_cast<QWidget*>(watched);
  MenuItem* item = nullptr;
  for (MenuItem* it : items_)
    if (it && (w == it || w == it->title())) item = it;
  if (item) {
    switch (event->type()) {
      case QEvent::Enter:
      case QEvent::MouseMove:
        if (hiIndex_ != item->index() || !hiByMouse_) highlight(item->index(), false);
        break;
      case QEvent::MouseButtonPress:
        lastPressNotLeft_ = static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton;
        return true;
      case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
          lastPressNotLeft_ = false;
          chooseItem(item->index());
        }
        return true;
      default:
        break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void MainMenu::chooseDatabase() {
  if (ChooseDatabase(this)) refreshDatabaseLabel(tr("No active Waypoint Database"));
}

void MainMenu::showAbout() {
  AboutDialog about(this);
  about.exec();
  if (about.updateRequested() && Hooks().runUpdate && Hooks().runUpdate(this)) close();
}

void MainMenu::changeEvent(QEvent* e) {
  if (e->type() == QEvent::WindowStateChange) {
    if (isMinimized()) {
      minimized_ = true;
      if (screen_) screen_->hide();
    } else if (minimized_) {
      minimized_ = false;
      if (screen_) screen_->show();
    }
  }
  QWidget::changeEvent(e);
}

bool MainMenu::saveSettings(std::string* error) {
  Settings& s = App().settings;
  if (s.RemindPosition == 1) {
    // Twips: 15 per device-independent pixel; the stored range is 0..32000.
    const QPoint p = frameGeometry().topLeft();
    s.IniTop = static_cast<int16_t>(std::clamp(p.y() * 15, 0, 32000));
    s.IniLeft = static_cast<int16_t>(std::clamp(p.x() * 15, 0, 32000));
  } else {
    s.IniTop = 0;
    s.IniLeft = 0;
  }
  return WriteSettings(App().settingsFile(), s, error);
}

void MainMenu::closeEvent(QCloseEvent* e) {
  closing_ = true;
  if (screen_) screen_->close();
  timer_->stop();
  // A write failure at exit is not put to the user: the program closes as asked, the old file stays
  // whole (the write is atomic), and the reason goes to standard error for whoever looks.
  std::string why;
  if (App().keepSettingsFile)
    std::fprintf(stderr, "norvane: %s: %s\n", App().settingsFile().c_str(), qPrintable(App().settingsNotice));
  else if (!saveSettings(&why))
    std::fprintf(stderr, "norvane: settings not saved to %s: %s\n", App().settingsFile().c_str(), why.c_str());
  QWidget::closeEvent(e);
}

}  // namespace norvane
