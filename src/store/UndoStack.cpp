#include "store/UndoStack.h"

#include <algorithm>

#include "base/DomainError.h"

namespace tarnwick {

UndoStack::~UndoStack() = default;

quint64 UndoStack::push(const Notice& notice, std::function<void()> undo, std::function<void()> redo,
                        std::function<void()> forget) {
  undone_.clear();
  const quint64 id = ++last_;
  append({{id, notice.sentence}, notice.display, std::move(undo), std::move(redo), std::move(forget)});
  return id;
}

void UndoStack::append(const Step& step) {
  while (steps_.size() >= kMost) forgetFirst();
  steps_.append(step);
  isNoticeTaken_ = false;
  if (!step.entry.sentence.isEmpty()) Q_EMIT offered(step.entry.id, step.entry.sentence);
  Q_EMIT pushed(step.entry.id, isNoticeTaken_ ? QString() : step.entry.sentence, step.display);
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
  if (run(step.undo) && step.redo) undone_.append(step);
}

void UndoStack::redo() {
  if (undone_.isEmpty()) return;
  const Step step = undone_.takeLast();
  if (run(step.redo)) append(step);
}

bool UndoStack::run(const std::function<void()>& change) {
  try {
    change();
    return true;
  } catch (const DomainError& failure) {
    Q_EMIT failed(failure.message());
    return false;
  }
}

void UndoStack::withdraw(quint64 id) {
  if (steps_.removeIf([id](const Step& step) { return step.entry.id == id; }) > 0) Q_EMIT gone(id);
}

void UndoStack::clear() {
  undone_.clear();
  while (!steps_.isEmpty()) forgetFirst();
}

void UndoStack::forgetFirst() {
  const Step step = steps_.takeFirst();
  Q_EMIT gone(step.entry.id);
  if (step.forget) step.forget();
}

}  // namespace tarnwick
