#include "services/HeldJSON.h"

#include <memory>
#include <utility>

#include "base/Background.h"

namespace tarnwick {

HeldJSON::HeldJSON(QJsonValue&& value) : value_(std::exchange(value, {})) {}

HeldJSON::~HeldJSON() {
  if (!value_.isArray() && !value_.isObject()) return;
  const auto held = std::make_shared<QJsonValue>(std::exchange(value_, {}));
  Background::run(Background::Lane::Computing, [held] { *held = {}; });
}

}  // namespace tarnwick
