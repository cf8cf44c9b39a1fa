#pragma once

#include <QString>
#include <QUuid>

#include "base/RecordCodec.h"

namespace tarnwick {

/// One line of the to-do list.
struct TodoItem {
  QUuid id;
  QString text;
  bool completed = false;

  static constexpr auto fields() {
    return std::tuple(field::required("id", &TodoItem::id), field::required("text", &TodoItem::text),
                      field::required("completed", &TodoItem::completed));
  }
  bool operator==(const TodoItem&) const = default;
};

}  // namespace tarnwick
