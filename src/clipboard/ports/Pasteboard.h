#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "desktop/Capability.h"

namespace tarnwick {

/// The program that put something on the clipboard, as far as the desktop tells. Has the members of ClientWindow by
/// which an application is found.
struct PasteboardOwner {
  QString applicationId;  ///< What the program calls itself; empty where that is not known.
  QString instance;       ///< The second name that X11 programs give.
  QString sandboxId;      ///< The id of the Flatpak or Snap that it runs in, where that is known.
  qint64 pid = 0;         ///< 0 where the desktop does not tell.

  bool operator==(const PasteboardOwner&) const = default;
};

/// How far one reading may go; beyond that it ends without a result.
struct PasteboardLimits {
  qint64 bytes = 0;

  static constexpr double kSilence = 5;  ///< Seconds without a byte.
  static constexpr double kWhole = 20;   ///< Seconds in all.
};

/// What came of one reading.
struct PasteboardContent {
  enum class End {
    Whole,
    TooLarge,
    TooSlow,
    Refused,  ///< The owner does not give it in this type after all, or ended.
    Changed,  ///< Something else is on the clipboard by now.
  };

  End end = End::Refused;
  QByteArray bytes;  ///< Empty unless it is whole.

  bool operator==(const PasteboardContent&) const = default;
};

/// Why the clipboard is another.
enum class PasteboardChange {
  Taken,      ///< A program, possibly this one, put something there.
  Cleared,    ///< It was emptied, or the desktop does not tell why it is empty.
  OwnerGone,  ///< What was there went with its program.
};

/// What this program puts on the clipboard: the same thing in several types, the richest first.
struct PasteboardOffer {
  struct Form {
    QString type;  ///< A MIME type.
    QByteArray bytes;

    bool operator==(const Form&) const = default;
  };

  QList<Form> forms;

  static PasteboardOffer text(const QString& text);
  /// As file managers offer a file that was copied.
  static PasteboardOffer file(const QString& path);
  static PasteboardOffer picture(const QByteArray& png);

  bool operator==(const PasteboardOffer&) const = default;
};

/// The desktop's clipboard, whoever owns it and whether or not this program has the focus; never the selection of the
/// middle mouse button. Each change has a number, and readings name the change that they are meant for: an owner that
/// is not the one of this change is asked for nothing. Main thread only; answers come later, from the event loop, and
/// never once their context is gone.
class Pasteboard : public QObject {
  Q_OBJECT
 public:
  using Types = std::function<void(const std::optional<QStringList>& types)>;
  using Content = std::function<void(const PasteboardContent& content)>;
  using Answer = std::function<void(bool holds)>;

  /// Whether changes are told and content can be read.
  virtual Capability capability() const { return Capability::yes(); }
  /// Whether it is told that an owner ended, apart from a deliberate clearing.
  virtual Capability endOfOwners() const { return capability(); }
  /// Whether owners are known by what they own, rather than guessed from the window that is active.
  virtual Capability owners() const { return capability(); }

  /// The number of the latest change. It only grows; what was there before the start is no change.
  virtual quint64 changeCount() const = 0;
  /// Whether nothing is there.
  virtual bool isEmpty() const = 0;
  /// Whether what is there was put there by this program, possibly by a run that is about to vanish.
  virtual bool isOwn() const { return false; }

  /// What the owner of that change offers: MIME types, and other names that it gave. Absent where it does not answer or
  /// another change came.
  virtual void readTypes(quint64 change, QObject* context, Types done) = 0;
  /// One of those types.
  virtual void readContent(quint64 change, const QString& type, const PasteboardLimits& limits, QObject* context,
                           Content done) = 0;
  /// Whether that change is still the latest, once everything is known that happened before this call.
  virtual void confirm(quint64 change, QObject* context, Answer done) = 0;
  /// The owner of the latest change.
  virtual PasteboardOwner owner() = 0;

  /// Puts something there, and keeps it there for as long as nobody takes its place; it is a change like any other.
  /// Returns its number. `changed` follows.
  virtual quint64 set(const PasteboardOffer& offer) = 0;
  virtual void clear() = 0;

  /// The program ends: what it owns is handed to the desktop's clipboard manager, where one runs. Takes half a second
  /// at most.
  virtual void handOver() {}

 Q_SIGNALS:
  /// There is another `changeCount`.
  void changed(tarnwick::PasteboardChange change);

 protected:
  using QObject::QObject;
};

/// A clipboard on which nothing ever changes, and on which what is put there is lost: where there is none to be
/// watched, and for pictures and tests.
class StillPasteboard final : public Pasteboard {
  Q_OBJECT
 public:
  explicit StillPasteboard(const Capability& capability = Capability::yes()) : capability_(capability) {}

  Capability capability() const override { return capability_; }
  quint64 changeCount() const override { return 0; }
  bool isEmpty() const override { return true; }
  void readTypes(quint64, QObject*, Types) override {}
  void readContent(quint64, const QString&, const PasteboardLimits&, QObject*, Content) override {}
  void confirm(quint64, QObject*, Answer) override {}
  PasteboardOwner owner() override { return {}; }
  quint64 set(const PasteboardOffer&) override { return 0; }
  void clear() override {}

 private:
  Capability capability_;
};

}  // namespace tarnwick
