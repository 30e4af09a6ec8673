#pragma once
// What every UI test does to a screen, written once: find a control by its object name, type into
// a box as a user does, click where a user clicks, show the window and wait for it.
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QString>
#include <QTest>
#include <QWidget>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "app/AppContext.hpp"
#include "app/InputBox.hpp"

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
QT_END_NAMESPACE

namespace norvane::test {

// A fresh application context with the decimal point and the day colours, for every UI test.
struct UiFixture : ::testing::Test {
  void SetUp() override {
    App() = AppContext{};
    App().decimalSep = u'.';
    UseColours(false);
  }
};

template <class T = QWidget>
T* Find(QWidget& w, const QString& name) {
  T* c = w.findChild<T*>(name);
  EXPECT_NE(c, nullptr) << "no control " << name.toStdString();
  return c;
}
inline InputBox* Box(QWidget& w, int i) { return Find<InputBox>(w, QStringLiteral("InBox%1").arg(i)); }

// The text a user reads in a label or a box named `name`.
inline QString Text(QWidget& w, const QString& name) {
  if (auto* l = w.findChild<QLabel*>(name)) return l->text();
  if (auto* b = w.findChild<QLineEdit*>(name)) return b->text();
  ADD_FAILURE() << "no label or box " << name.toStdString();
  return {};
}
// The texts of `prefix`0 .. `prefix`n-1 ("dataR", "InBox").
inline std::vector<std::string> Texts(QWidget& w, const char* prefix, int n, int from = 0) {
  std::vector<std::string> out;
  for (int i = from; i < from + n; ++i) out.push_back(Text(w, QStringLiteral("%1%2").arg(prefix).arg(i)).toStdString());
  return out;
}

// Replaces the text of box i by typing, as a user does after the box selected all on focus.
inline void Type(QWidget& w, int i, const QString& text) {
  InputBox* b = Box(w, i);
  b->setFocus();
  b->selectAll();
  QTest::keyClick(b, Qt::Key_Delete);
  QTest::keyClicks(b, text);
}

// Clicks a button where a user would: option buttons and check boxes on their indicator (a click
// right of the caption, inside a wide layout cell, does not toggle them).
inline void Click(QWidget& w, const QString& name) {
  auto* b = Find<QAbstractButton>(w, name);
  if (!b) return;
  if (qobject_cast<QPushButton*>(b))
    QTest::mouseClick(b, Qt::LeftButton);
  else
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(8, b->height() / 2));
}
inline bool Checked(QWidget& w, const QString& name) { return Find<QAbstractButton>(w, name)->isChecked(); }

inline bool CanCalculate(QWidget& w) { return Find<QPushButton>(w, "cmdCalculate")->isEnabled(); }
inline void Calculate(QWidget& w) {
  ASSERT_TRUE(CanCalculate(w));
  QTest::mouseClick(Find<QPushButton>(w, "cmdCalculate"), Qt::LeftButton);
}

// Shows a screen owned by the test (not deleted on close) and waits until it is on screen.
inline void Show(QWidget& s) {
  s.setAttribute(Qt::WA_DeleteOnClose, false);
  s.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&s));
}

}  // namespace norvane::test
