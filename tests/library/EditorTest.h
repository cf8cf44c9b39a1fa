#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "library/LibraryFixture.h"

namespace tarnwick::test {

/// The control of that name; null where there is none.
template <class Control>
Control* named(QWidget& window, const QString& name) {
  for (auto* control : window.findChildren<Control*>())
    if (const QString own = control->accessibleName(); own == name || own.startsWith(name + QLatin1StringView(": ")))
      return control;
  return nullptr;
}

inline bool says(QWidget& window, const QString& sentence) {
  for (const QLabel* label : window.findChildren<QLabel*>())
    if (label->isVisible() && label->text() == sentence) return true;
  return false;
}

class EditorTest : public testing::Test {
 protected:
  LibraryFixture fixture_;

  void write(EditorWindow& window, const QString& field, const QString& text) {
    auto* line = named<QLineEdit>(window, field);
    ASSERT_TRUE(line) << field.toStdString();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
  }
};

}  // namespace tarnwick::test
