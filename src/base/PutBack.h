#pragma once

#include <QList>
#include <algorithm>
#include <functional>

namespace tarnwick {

/// Gives a list what it lacks of an older one, each at its place in that. `key` identifies the items.
template <class Item, class Key = std::identity>
void putBack(QList<Item>& list, const QList<Item>& older, Key key = {}) {
  for (qsizetype i = 0; i < older.size(); ++i)
    if (std::ranges::find(list, std::invoke(key, older[i]), key) == list.end())
      list.insert(std::min(i, list.size()), older[i]);
}

/// The other way round: takes out of a list what `older` held and `newer` does not.
template <class Item, class Key = std::identity>
void takeOut(QList<Item>& list, const QList<Item>& older, const QList<Item>& newer, Key key = {}) {
  const auto holds = [&](const QList<Item>& items, const Item& item) {
    return std::ranges::find(items, std::invoke(key, item), key) != items.end();
  };
  list.removeIf([&](const Item& item) { return holds(older, item) && !holds(newer, item); });
}

}  // namespace tarnwick
