#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace tarnwick {

/// What the user did lately and may take back, the newest last. Main thread only.
class UndoStack : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype kMost = 20;

  /// What a bubble shows of an entry.
  struct Entry {
    quint64 id = 0;
    QString sentence;  ///< What was done, as a finished sentence; empty for what nobody need be told of.

    bool operator==(const Entry&) const = default;
  };

  /// What the user is told of a step, and beside which dock.
  struct Notice {
    Notice(const QString& words = {}, const QString& dock = {}) : sentence(words), display(dock) {}
    QString sentence;  ///< Finished; empty for what nobody need be told of.
    QString display;   ///< That of the dock where it was done; empty for none.
  };

  ~UndoStack() override;

  /// `undo` takes it back; it may throw DomainError and must bear being called when what it needs is gone. `forget`
  /// runs once when the entry can no longer be taken back, for what was kept until then. Gives the entry's identity.
  quint64 push(const Notice& notice, std::function<void()> undo, std::function<void()> forget = {});

  /// The newest; nothing when there is none.
  std::optional<Entry> latest() const;
  qsizetype size() const { return steps_.size(); }

  /// Takes the newest back.
  void undo();
  /// Takes that one back, whatever came after it. One that is gone is ignored.
  void undo(quint64 id);
  /// Takes an entry out that turned out to have done nothing.
  void withdraw(quint64 id);
  /// Forgets all, the oldest first: to be called before the program ends.
  void clear();

 Q_SIGNALS:
  /// Something new can be taken back.
  void pushed(quint64 id, const QString& sentence, const QString& display);
  /// An entry can no longer be taken back: it was, or it fell off.
  void gone(quint64 id);
  /// A finished sentence for the user.
  void failed(const QString& message);

 private:
  struct Step {
    Entry entry;
    std::function<void()> undo;
    std::function<void()> forget;
  };

  void forgetFirst();

  QList<Step> steps_;
  quint64 last_ = 0;
};

}  // namespace tarnwick
