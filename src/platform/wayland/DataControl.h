#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

#include "base/FileDescriptor.h"
#include "base/Scheduler.h"
#include "platform/wayland/WaylandSession.h"

namespace tarnwick {

/// Tells what is copied on the session's seat, and lets a program copy without a window; knows nothing of the selection
/// of the middle mouse button. Speaks the protocol that is meant for every compositor where there is one, else the
/// older one of wlroots; they differ in their names alone. Where the compositor ends it, it is asked for again while
/// there is a seat. Main thread only.
class DataControl : public QObject {
 public:
  /// An owner that offers more is up to something, and would hide a mark in it.
  static constexpr qsizetype kMostTypes = 1024;
  /// So many seconds lie between two times that it is asked for.
  static constexpr double kBetween = 1;

  /// What some program offers.
  class Offer {
   public:
    virtual ~Offer() = default;
    /// One more than kMostTypes at most.
    const QStringList& types() const { return types_; }
    /// Has the program write into a pipe, whose other end may be closed once the connection was flushed.
    virtual void receive(const QString& type, const FileDescriptor& into) = 0;

   protected:
    QStringList types_;
  };

  /// What we offer. Destroying it takes it off the clipboard.
  class Source {
   public:
    virtual ~Source() = default;
  };

  class Watcher {
   public:
    virtual ~Watcher() = default;
    /// What is on the clipboard now; null for nothing. `isNews`: it was put there since we were listened to.
    virtual void selected(std::unique_ptr<Offer> offer, bool isNews) = 0;
    /// Nothing is told any more until `selected` is called again.
    virtual void ended() = 0;
    virtual void send(const Source& source, const QString& type, FileDescriptor into) = 0;
    /// It is on the clipboard no more. May destroy it.
    virtual void cancelled(const Source& source) = 0;
  };

  /// Null where the compositor has no such thing. What it is made with must outlive it.
  static std::unique_ptr<DataControl> bind(const WaylandSession& session, Scheduler& scheduler, Watcher& watcher);
  ~DataControl() override;

  /// Whether it is listened to just now.
  virtual bool isThere() const = 0;
  /// Puts something on the clipboard. Only while it is there, as clear().
  virtual std::unique_ptr<Source> set(const QStringList& types) = 0;
  virtual void clear() = 0;

 protected:
  DataControl(const WaylandSession& session, Scheduler& scheduler, Watcher& watcher);

  virtual void begin(wl_seat* seat) = 0;
  virtual void drop() = 0;
  void tell(std::unique_ptr<Offer> offer);
  void end();
  Watcher& watcher() const { return watcher_; }

 private:
  void beginWhereASeatIs();

  const WaylandSession& session_;
  Scheduler& scheduler_;
  Watcher& watcher_;
  bool knowsFirst_ = false;  ///< Whether what was there at the beginning has been told.
  WaylandOwned<wl_callback> first_;
  double begun_ = 0;  ///< When it was asked for last.
  JobHandle again_;
};

}  // namespace tarnwick
