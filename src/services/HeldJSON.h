#pragma once

#include <QJsonValue>

namespace tarnwick {

/// Holds an answer and frees it on another thread, unless others hold parts of it: a large one takes as long as a frame
/// lasts.
class HeldJSON {
 public:
  explicit HeldJSON(QJsonValue&& value);
  Q_DISABLE_COPY_MOVE(HeldJSON)
  ~HeldJSON();

  const QJsonValue& value() const { return value_; }

 private:
  QJsonValue value_;
};

}  // namespace tarnwick
