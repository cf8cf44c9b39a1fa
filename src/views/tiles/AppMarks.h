#pragma once

#include <QString>
#include <optional>

namespace tarnwick {

/// What an application is up to, as the place of its icon shows it.
struct AppMarks {
  bool running = false;
  bool front = false;
  bool urgent = false;               ///< It asks for attention.
  bool launching = false;            ///< It was started, and no window has come of that yet.
  std::optional<double> progress{};  ///< From 0 to 1.
  std::optional<qint64> count{};     ///< Of unread things; nothing is shown for 0 and below.
  qsizetype windows = 1;             ///< A dot each while it runs, up to four.

  bool operator==(const AppMarks&) const = default;
};

/// The marks in words; empty where there is nothing to say beyond that it runs.
QString describe(const AppMarks& marks);

/// What a tile must know of an application that the user put on the dock.
struct ApplicationFacts {
  QString name;
  QString icon;          ///< What the provider of icons knows it by.
  quint64 identity = 0;  ///< Of the running application; 0 while it does not run.
  AppMarks marks;

  bool operator==(const ApplicationFacts&) const = default;
};

}  // namespace tarnwick
