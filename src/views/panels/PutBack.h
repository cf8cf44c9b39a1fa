#pragma once

#include <QStringList>
#include <algorithm>
#include <functional>

#include "store/AppStore.h"
#include "store/DocumentEdits.h"

namespace tarnwick {

/// Gives a list what it lacks of an older one, each at its place in that. `key` tells the items apart.
template <class Item, class Key = std::identity>
void putBack(QList<Item>& list, const QList<Item>& older, Key key = {}) {
  for (qsizetype i = 0; i < older.size(); ++i)
    if (std::ranges::find(list, std::invoke(key, older[i]), key) == list.end())
      list.insert(std::min(i, list.size()), older[i]);
}

/// The same, for a widget's option that lists names with something between them; a step that waits to be taken back.
inline std::function<void()> puttingBack(AppStore& store, const QUuid& widget, const QString& key, QChar between,
                                         const QStringList& older) {
  return [store = &store, widget, key, between, older] {
    const DockWidget* stored = DocumentEdits::find(store->config(), widget);
    if (!stored) return;
    QStringList list = stored->options.value(key).split(between, Qt::SkipEmptyParts);
    putBack<QString>(list, older);
    store->set(widget, key, list.join(between));
  };
}

}  // namespace tarnwick
