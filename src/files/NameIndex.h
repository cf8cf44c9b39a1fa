#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <cstddef>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace tarnwick {

/// The names of everything below a folder, in a file that is searched where it lies: a table of entries and two packed
/// texts, of the names as searches compare them and of those that are written otherwise. What is in a folder stands
/// together, in the order of the folders. The file is mapped while this object lives. It never changes; a newer one
/// takes its place. Any thread may use it.
class NameIndex {
  struct Entry;

 public:
  struct Traits {
    bool isFolder = false;
    bool isHidden = false;  ///< It, or a folder that it is in, has a name that begins with a dot.

    bool operator==(const Traits&) const = default;
  };

  /// When a folder was changed that was never read: its names are still to come.
  static constexpr quint32 kUnread = 0;
  /// When one was changed that could not be read: an impossible time, so that it is tried again.
  static constexpr quint32 kUnreadable = 1;

  /// A set of folders, by their places.
  using Folders = std::vector<bool>;

  /// Collects the names of a new index.
  class Builder {
   public:
    /// `root`: the path of the folder, as the system writes it. It is the entry 0.
    explicit Builder(const QByteArray& root);

    /// Adds a name to a folder that was added before; gives the place of the new entry. `changed`: seconds since the
    /// epoch. Absent, and counted, for a name that is not UTF-8 and for more than an index can hold. The names of one
    /// folder come one after the other, and folders in the order in which they were added.
    std::optional<quint32> add(quint32 folder, const QByteArray& name, qint64 changed, Traits traits);
    /// The same with an entry of another index.
    std::optional<quint32> add(quint32 folder, const NameIndex& other, quint32 place);
    void setChanged(quint32 place, quint32 changed);

    quint32 size() const { return count_; }
    qsizetype leftOut() const { return leftOut_; }
    Traits traits(quint32 place) const;
    QByteArray path(quint32 place) const;

    /// The content of the file as it is now. `isWhole`: whether every folder was read.
    QByteArray content(bool isWhole) const;
    /// The same; nothing is left to add to afterwards.
    QByteArray finish(bool isWhole = true);

   private:
    bool isFull() const;
    /// The head of the file, with room for all of it.
    QByteArray begin(bool isWhole) const;
    void append(quint32 folder, QByteArrayView name, QByteArrayView folded, quint32 changed, Traits traits);
    Entry entry(quint32 place) const;
    QByteArray name(quint32 place) const;

    QByteArray entries_;
    QByteArray folded_;
    QByteArray originals_;
    quint32 count_ = 0;
    qsizetype leftOut_ = 0;
  };

  /// Null for a file that is missing or damaged, of another version, or of another folder than `root`: it is made anew.
  static std::unique_ptr<NameIndex> open(const QString& path, const QByteArray& root);
  Q_DISABLE_COPY_MOVE(NameIndex)
  ~NameIndex();

  /// Whether every folder was read when it was written.
  bool isWhole() const { return isWhole_; }
  /// Whether the file is as it was written. Reads all of it.
  bool isSound() const;
  /// Has all of it in memory, so that a search waits for no page of it.
  void warm() const;
  /// Gives back the memory of what was read so far; what is asked for again comes back from the system's own.
  void forgetRead() const;

  struct Hit {
    quint32 place = 0;
    quint32 changed = 0;  ///< When it was changed, as far as the index knows.

    bool operator==(const Hit&) const = default;
  };

  qsizetype size() const { return count_; }
  /// The entries whose names hold a text, whatever the case and the accents, the newest first and at most so many.
  /// Hidden ones answer only to a text that begins with a dot. What is in the folders of `first` comes before all else.
  /// None once it is asked to stop.
  QList<Hit> find(const QString& text, qsizetype most, const std::stop_token& stop = {},
                  const Folders& first = {}) const;
  /// Of the folders that were read and are not hidden those that were changed last, at most so many.
  QList<quint32> newestFolders(qsizetype most) const;

  Traits traits(quint32 place) const;
  quint32 changed(quint32 place) const;
  /// What is in a folder: the first place and the one behind the last.
  std::pair<quint32, quint32> contentOf(quint32 folder) const;
  QByteArray name(quint32 place) const;
  /// The whole path, as the system writes it; empty for one that is longer than the system takes.
  QByteArray path(quint32 place) const;

 private:
  NameIndex(const std::byte* begin, std::size_t size) : begin_(begin), size_(size) {}
  /// Whether the parts that the file is said to have fit into it.
  bool readHeader();
  Entry entry(quint32 place) const;
  quint32 placeOf(quint32 offset, quint32 from) const;
  QByteArrayView textAt(QByteArrayView texts, quint32 offset) const;

  const std::byte* begin_;
  std::size_t size_;
  quint32 count_ = 0;
  bool isWhole_ = false;
  QByteArrayView folded_;
  QByteArrayView originals_;
};

}  // namespace tarnwick
