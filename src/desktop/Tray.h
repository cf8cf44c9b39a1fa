#pragma once

#include <QObject>
#include <memory>

namespace tarnwick {

/// The place that a desktop has for the icons of programs.
class Tray : public QObject {
  Q_OBJECT
 public:
  /// Looks for one and goes on looking; either signal may come from within this call.
  virtual void look() = 0;

 Q_SIGNALS:
  /// There is one. Comes again with each new one. An icon may be made in answer.
  void found();
  /// There is none at the beginning.
  void missing();
};

/// A tray of one kind, and only where there is none at the beginning, of another kind: whichever comes first.
class EitherTray final : public Tray {
  Q_OBJECT
 public:
  /// Neither is null.
  EitherTray(std::unique_ptr<Tray> first, std::unique_ptr<Tray> other);
  ~EitherTray() override;

  void look() override;

 private:
  std::unique_ptr<Tray> first_;
  std::unique_ptr<Tray> other_;  // Null once one was found, so that nothing is looked for any more.
};

}  // namespace tarnwick
