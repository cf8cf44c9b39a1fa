#pragma once

#include <QList>
#include <QString>
#include <chrono>
#include <optional>

#include "desktop/Capability.h"

namespace tarnwick {

/// Windows and controls of other programs, as assistive technologies see them. Belongs to one thread, which is not the
/// main one: each call asks the other program and waits for as long as `kPatience` at most. What a program does not
/// answer is as if it were not there.
class AccessibleControls {
 public:
  static constexpr std::chrono::milliseconds kPatience{500};

  /// A window or something in it, as long as its program keeps it.
  struct Element {
    QString program;
    QString place;
  };
  struct Reading {
    QString label;
    bool isControl = false;  ///< Something that can be pressed.
    bool isEnabled = false;
  };

  virtual ~AccessibleControls() = default;

  /// Whether programs can be asked at all.
  virtual Capability capability() = 0;
  /// The windows of a process.
  virtual QList<Element> windows(qint64 pid) = 0;
  virtual QList<Element> children(const Element& element) = 0;
  virtual std::optional<Reading> read(const Element& element) = 0;
  /// False where the program refused or did not answer.
  virtual bool press(const Element& element) = 0;
};

}  // namespace tarnwick
