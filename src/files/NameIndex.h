#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <cstddef>
#include <memory>
#include <optional>
#include <stop_token>

namespace tarnwick {

/// The names of everything below a folder, in a file that is searched where it lies: a table of entries and two packed
/// texts, of the names as searches compare them and of those that are written otherwise. The file is mapped while this
/// object lives. It never changes; a newer one takes its place. Any thread may use it.
class NameIndex {
 public:
  struct Traits {
    bool isFolder = false;
    bool isHidden = false;  ///< It, or a folder that it is in, has a name that begins with a dot.

    bool operator==(const Traits&) const = default;
  };

  /// Collects the names of a new index.
  class Builder {
   public:
    /// `root`: the path of the folder, as the system writes it. It is the entry 0.
    explicit Builder(const QByteArray& root);

    /// Adds a name to a folder that was added before; gives the place of the new entry. `changed`: seconds since the
    /// epoch. Absent, and counted, for a name that is not UTF-8 and for more than an index can hold.
    std::optional<quint32> add(quint32 folder, const QByteArray& name, qint64 changed, Traits traits);
    qsizetype leftOut() const { return leftOut_; }

    /// The content of the file; nothing is left to add to afterwards.
    QByteArray finish();

   private:
    void append(quint32 folder, const QByteArray& name, const QByteArray& folded, qint64 changed, Traits traits);

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

  struct Hit {
    quint32 place = 0;
    quint32 changed = 0;  ///< When it was changed, as far as the index knows.

    bool operator==(const Hit&) const = default;
  };

  qsizetype size() const { return count_; }
  /// The entries whose names hold a text, whatever the case and the accents, the newest first and at most so many.
  /// Hidden ones answer only to a text that begins with a dot. None once it is asked to stop.
  QList<Hit> find(const QString& text, qsizetype most, const std::stop_token& stop = {}) const;

  Traits traits(quint32 place) const;
  QByteArray name(quint32 place) const;
  /// The whole path, as the system writes it.
  QByteArray path(quint32 place) const;

 private:
  struct Entry;

  NameIndex(const std::byte* begin, std::size_t size) : begin_(begin), size_(size) {}
  /// Whether the parts that the file is said to have fit into it.
  bool readHeader();
  Entry entry(quint32 place) const;
  quint32 placeOf(quint32 offset, quint32 from) const;
  QByteArrayView textAt(QByteArrayView texts, quint32 offset) const;

  const std::byte* begin_;
  std::size_t size_;
  quint32 count_ = 0;
  QByteArrayView folded_;
  QByteArrayView originals_;
};

}  // namespace tarnwick
