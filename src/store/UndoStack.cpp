#include "store/UndoStack.h"

#include <algorithm>

#include "base/DomainError.h"

namespace tarnwick {

UndoStack::~UndoStack() = default;

quint64 UndoStack::push(const Notice& notice, std::function<void()> undo, std::function<void()> forget) {
  while (steps_.size() >= kMost) forgetFirst();
  steps_.append({{++last_, notice.sentence}, std::move(undo), std::move(forget)});
  Q_EMIT pushed(last_, notice.sentence, notice.display);
  return last_;
}

std::optional<UndoStack::Entry> UndoStack::latest() const {
  if (steps_.isEmpty()) return std::nullopt;
  return steps_.last().entry;
}

void UndoStack::undo() {
  if (!steps_.isEmpty()) undo(steps_.last().entry.id);
}

void UndoStack::undo(quint64 id) {
  const auto found = std::ranges::find(steps_, id, [](const Step& step) { return step.entry.id; });
  if (found == steps_.end()) return;
  // Out of the list first: taking back may push or undo something itself.
  const Step step = *found;
  steps_.erase(found);
  Q_EMIT gone(id);
  try {
    step.undo();
  } catch (const DomainError& failure) {
    Q_EMIT failed(failure.message());
  }
}

void UndoStack::withdraw(quint64 id) {
  if (steps_.removeIf([id](const Step& step) { return step.entry.id == id; }) > 0) Q_EMIT gone(id);
}

void UndoStack::clear() {
  while (!steps_.isEmpty()) forgetFirst();
}

void UndoStack::forgetFirst() {
  const Step step = steps_.takeFirst();
  Q_EMIT gone(step.entry.id);
  if (step.forget) step.forget();
}

}  // namespace tarnwick
