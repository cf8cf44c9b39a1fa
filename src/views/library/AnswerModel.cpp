#include "views/library/AnswerModel.h"

#include <QJsonArray>
#include <QJsonObject>
#include <algorithm>

#include "base/Background.h"
#include "base/ForeignText.h"
#include "base/LocalFigures.h"
#include "services/JSONMetric.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

struct AnswerModel::Node {
  Node* outer = nullptr;
  int row = 0;
  QString name;
  QJsonValue value;
  qsizetype rest = 0;  ///< How many a row stands for that says so.
  bool isReachable = true;
  bool isOpened = false;
  std::vector<std::unique_ptr<Node>> children;

  qsizetype count() const {
    if (value.isObject()) return value.toObject().size();
    return value.isArray() ? value.toArray().size() : 0;
  }
};

namespace {

/// Whether a path can name it as one of its pieces, and shows what it names.
bool isPiece(const QString& name) { return !name.isEmpty() && !name.contains(u'.') && ForeignText::line(name) == name; }

}  // namespace

AnswerModel::AnswerModel(QObject* parent) : QAbstractItemModel(parent), root_(std::make_unique<Node>()) {}

AnswerModel::~AnswerModel() { release(std::move(root_)); }

/// A large answer takes as long to free as a frame lasts: that is done on another thread.
void AnswerModel::release(std::unique_ptr<Node> root) {
  if (!root->value.isObject() && !root->value.isArray()) return;
  const auto held = std::make_shared<std::unique_ptr<Node>>(std::move(root));
  Background::run(Background::Lane::Computing, [held] { held->reset(); });
}

void AnswerModel::setAnswer(const QJsonValue& answer) {
  beginResetModel();
  release(std::exchange(root_, std::make_unique<Node>()));
  root_->value = answer;
  root_->children = childrenOf(*root_);
  root_->isOpened = true;
  endResetModel();
}

AnswerModel::Node& AnswerModel::nodeOf(const QModelIndex& index) const {
  return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : *root_;
}

std::vector<std::unique_ptr<AnswerModel::Node>> AnswerModel::childrenOf(Node& node) {
  std::vector<std::unique_ptr<Node>> children;
  const auto add = [&](const QString& name, const QJsonValue& value, bool isReachable) {
    auto child = std::make_unique<Node>();
    child->outer = &node;
    child->row = static_cast<int>(children.size());
    child->name = name;
    child->value = value;
    child->isReachable = isReachable;
    children.push_back(std::move(child));
  };
  const qsizetype shown = std::min(node.count(), kMostChildren);
  if (node.value.isObject()) {
    const QJsonObject object = node.value.toObject();
    auto at = object.constBegin();
    for (qsizetype i = 0; i < shown; ++i, ++at) add(at.key(), at.value(), node.isReachable && isPiece(at.key()));
  } else if (node.value.isArray()) {
    const QJsonArray list = node.value.toArray();
    for (qsizetype i = 0; i < shown; ++i) add(QString::number(i), list.at(i), node.isReachable);
  }
  if (const qsizetype rest = node.count() - shown; rest > 0) {
    add({}, {}, false);
    children.back()->rest = rest;
  }
  return children;
}

// --- What a row says ------------------------------------------------------------------------------------------------

AnswerModel::Sort AnswerModel::sort(const QModelIndex& index) const {
  const Node& node = nodeOf(index);
  if (node.rest > 0) return Sort::Rest;
  switch (node.value.type()) {
    case QJsonValue::Double:
      return Sort::Number;
    case QJsonValue::String:
      return Sort::Text;
    case QJsonValue::Bool:
      return Sort::Truth;
    case QJsonValue::Object:
      return Sort::Object;
    case QJsonValue::Array:
      return Sort::List;
    default:
      return Sort::Nothing;
  }
}

QString AnswerModel::name(const QModelIndex& index) const {
  const Node& node = nodeOf(index);
  if (node.rest > 0) return LibraryWords::tr("and %1 more").arg(LocalFigures::number(node.rest));
  return ForeignText::line(node.name);
}

QString AnswerModel::value(const QModelIndex& index) const {
  const Node& node = nodeOf(index);
  switch (sort(index)) {
    case Sort::Number:
      return JSONMetric::text(node.value);
    case Sort::Text:
      return u'"' + ForeignText::line(node.value.toString()) + u'"';
    case Sort::Truth:
      return node.value.toBool() ? u"true"_s : u"false"_s;
    case Sort::Nothing:
      return u"null"_s;
    case Sort::Object:
      return u"{ %1 }"_s.arg(LocalFigures::number(node.count()));
    case Sort::List:
      return u"[ %1 ]"_s.arg(LocalFigures::number(node.count()));
    case Sort::Rest:
      break;
  }
  return {};
}

QString AnswerModel::path(const QModelIndex& index) const {
  QStringList pieces;
  for (const Node* node = &nodeOf(index); node->outer; node = node->outer) pieces.prepend(node->name);
  return pieces.join(u'.');
}

bool AnswerModel::canShow(const QModelIndex& index) const {
  if (!index.isValid() || !nodeOf(index).isReachable) return false;
  const Sort kind = sort(index);
  return kind == Sort::Number || kind == Sort::Text || kind == Sort::List;
}

QModelIndex AnswerModel::find(const QString& path) {
  QModelIndex at;
  for (const QStringView piece : QStringView(path).split(u'.', Qt::SkipEmptyParts)) {
    if (canFetchMore(at)) fetchMore(at);
    const auto& children = nodeOf(at).children;
    const auto child = std::ranges::find_if(
        children, [&](const std::unique_ptr<Node>& node) { return node->rest == 0 && node->name == piece; });
    if (child == children.end()) return {};
    at = createIndex((*child)->row, 0, child->get());
  }
  return at;
}

// --- The tree -------------------------------------------------------------------------------------------------------

QModelIndex AnswerModel::index(int row, int column, const QModelIndex& parent) const {
  const auto& children = nodeOf(parent).children;
  if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= children.size()) return {};
  return createIndex(row, 0, children[static_cast<std::size_t>(row)].get());
}

QModelIndex AnswerModel::parent(const QModelIndex& index) const {
  Node* outer = nodeOf(index).outer;
  return outer && outer->outer ? createIndex(outer->row, 0, outer) : QModelIndex();
}

int AnswerModel::rowCount(const QModelIndex& parent) const { return static_cast<int>(nodeOf(parent).children.size()); }

int AnswerModel::columnCount(const QModelIndex&) const { return 1; }

bool AnswerModel::hasChildren(const QModelIndex& parent) const { return nodeOf(parent).count() > 0; }

bool AnswerModel::canFetchMore(const QModelIndex& parent) const {
  const Node& node = nodeOf(parent);
  return !node.isOpened && node.count() > 0;
}

void AnswerModel::fetchMore(const QModelIndex& parent) {
  Node& node = nodeOf(parent);
  if (std::exchange(node.isOpened, true)) return;
  auto children = childrenOf(node);
  if (children.empty()) return;
  beginInsertRows(parent, 0, static_cast<int>(children.size()) - 1);
  node.children = std::move(children);
  endInsertRows();
}

QVariant AnswerModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return name(index);
    case Qt::AccessibleTextRole: {
      const QString shown = value(index);
      return shown.isEmpty() ? name(index) : LibraryWords::tr("%1: %2").arg(name(index), shown);
    }
    case Qt::AccessibleDescriptionRole:
      return canShow(index) ? QString() : LibraryWords::tr("Not a value that a tile can show.");
    default:
      return {};
  }
}

Qt::ItemFlags AnswerModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  return sort(index) == Sort::Rest ? Qt::ItemFlags(Qt::ItemIsEnabled) : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace tarnwick
