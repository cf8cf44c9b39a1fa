#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace tarnwick {

/// What the user did lately and may take back, the newest last, and what was taken back and may be made again. Main
/// thread only.
class UndoStack : public QObject {
  Q_OBJECT
 public:
  static constexpr qsizetype kMost = 20;

  /// What a bubble shows of an entry.
  struct Entry {
    quint64 id = 0;
    QString sentence;  ///< What was done, as a finished sentence; empty for what is not announced.

    bool operator==(const Entry&) const = default;
  };

  /// What is announced to the user about a step, and beside which dock.
  struct Notice {
    Notice(const QString& words = {}, const QString& dock = {}) : sentence(words), display(dock) {}
    QString sentence;  ///< Finished; empty for what is not announced.
    QString display;   ///< That of the dock where it was done; empty for none.
  };

  ~UndoStack() override;

  /// `undo` takes it back and `redo` makes it again; both may throw DomainError, must bear being called when what they
  /// need is gone, and may be called again and again in turn. Without `redo` it is taken back for good. `forget` runs
  /// once when the entry can no longer be taken back, for what was kept until then. Gives the entry's identity. What
  /// was taken back before cannot be made again from here on.
  quint64 push(const Notice& notice, std::function<void()> undo, std::function<void()> redo = {},
               std::function<void()> forget = {});

  /// The newest; nothing when there is none.
  std::optional<Entry> latest() const;
  qsizetype size() const { return steps_.size(); }
  /// While offered() is emitted: whoever calls this tells the user of the entry, and nobody else needs to.
  void takeNotice() { isNoticeTaken_ = true; }

  /// Takes the newest back.
  void undo();
  /// Takes that one back, whatever came after it. One that is gone is ignored.
  void undo(quint64 id);
  /// Makes again what was taken back last; it is the newest then.
  void redo();
  bool canRedo() const { return !undone_.isEmpty(); }
  /// Takes an entry out that can no longer be taken back, or turned out to have done nothing.
  void withdraw(quint64 id);
  /// Forgets all, the oldest first: to be called before the program ends.
  void clear();

 Q_SIGNALS:
  /// Something new is to be announced; pushed() follows.
  void offered(quint64 id, const QString& sentence);
  /// Something new can be taken back. `sentence` is empty for what is not announced any more.
  void pushed(quint64 id, const QString& sentence, const QString& display);
  /// An entry can no longer be taken back: it was, or it fell off.
  void gone(quint64 id);
  /// A finished sentence for the user.
  void failed(const QString& message);

 private:
  struct Step {
    Entry entry;
    QString display;
    std::function<void()> undo;
    std::function<void()> redo;
    std::function<void()> forget;
  };

  void append(const Step& step);
  bool run(const std::function<void()>& change);
  void forgetFirst();

  QList<Step> steps_;
  QList<Step> undone_;  // The one that was taken back last is the last.
  quint64 last_ = 0;
  bool isNoticeTaken_ = false;
};

}  // namespace tarnwick
