#pragma once

#include <QList>
#include <QString>
#include <functional>

namespace tarnwick {

/// Which tile of a row takes what is dropped on it.
struct DropRouting {
  /// What the rules need of a tile.
  struct Tile {
    QString kind;
    QString family;
    QString path;      ///< Of its folder or application; empty for none.
    double width = 0;  ///< In the row's own measure.
  };

  struct Target {
    enum class Kind { None, AirDrop, Folder };

    Kind kind = Kind::None;
    qsizetype at = -1;  ///< The index of a folder's tile.
    QString path;       ///< The folder.

    bool operator==(const Target&) const = default;
  };

  /// Whether a path names a folder that exists.
  using IsFolder = std::function<bool(const QString& path)>;

  /// The index of the tile that covers `x`, or -1. A tile covers its start but not its end; the gaps between tiles are
  /// no tile.
  static qsizetype indexAt(double x, const QList<Tile>& tiles, double spacing, double leadingInset);

  /// What takes files that are dropped at `x` along a row.
  static Target route(double x, const QList<Tile>& tiles, double spacing, double leadingInset,
                      const IsFolder& isFolder);
  /// `at` is the index that a folder is answered with.
  static Target route(const Tile& tile, qsizetype at, const IsFolder& isFolder);
};

}  // namespace tarnwick
