#pragma once

#include <QAbstractItemModel>
#include <QJsonValue>
#include <memory>
#include <vector>

namespace tarnwick {

/// The answer of a service as a tree of its fields. What lies inside a field is made when it is opened, and no more
/// than kMostChildren of it; a last row says how many are left out. Texts are cleaned of what could act on others, and
/// cut. One column.
class AnswerModel final : public QAbstractItemModel {
  Q_OBJECT
 public:
  static constexpr qsizetype kMostChildren = 200;

  /// What the value of a row is, which decides its colour.
  enum class Sort { Number, Text, Truth, Nothing, Object, List, Rest };

  explicit AnswerModel(QObject* parent = nullptr);
  ~AnswerModel() override;

  void setAnswer(const QJsonValue& answer);

  Sort sort(const QModelIndex& index) const;
  /// The name of the field, or its place in a list.
  QString name(const QModelIndex& index) const;
  /// Its value as it is shown: a count of an object or a list.
  QString value(const QModelIndex& index) const;
  /// The path that names the row, as a widget's option has it.
  QString path(const QModelIndex& index) const;
  /// Whether a widget can show it: a number, a text or a list, which a path can name.
  bool canShow(const QModelIndex& index) const;
  /// The row of a path, whose outer rows are made for it; invalid where there is none.
  QModelIndex find(const QString& path);

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& index) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Node;

  static void release(std::unique_ptr<Node> root);
  Node& nodeOf(const QModelIndex& index) const;
  static std::vector<std::unique_ptr<Node>> childrenOf(Node& node);

  std::unique_ptr<Node> root_;
};

}  // namespace tarnwick
