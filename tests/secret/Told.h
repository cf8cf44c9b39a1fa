#pragma once

#include <QCoroTask>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <type_traits>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "desktop/Capability.h"
#include "services/MaybeCredential.h"
#include "services/ports/SecretStore.h"
#include "support/Wait.h"

namespace tarnwick::test {

inline QString wordsOf(bool value) { return QString::fromLatin1(value ? "true" : "false"); }
inline QString wordsOf(int value) { return QString::number(value); }
inline QString wordsOf(const QList<SecretAttributes>& value) { return QString::number(value.size()); }
inline QString wordsOf(const Capability& value) { return value ? wordsOf(true) : value.reason; }
inline QString wordsOf(const std::optional<QString>& value) { return value.value_or(QStringLiteral("nothing")); }
inline QString wordsOf(const MaybeCredential& value) {
  return value.value + u'/' + value.unread + (value.hasNoKeyring ? QStringLiteral("/no keyring") : QString());
}
inline QString wordsOf(QStringList value) {
  value.sort();
  return value.join(u' ');
}

/// How a task ended, as soon as it has.
using Told = std::shared_ptr<std::optional<QString>>;

template <class T>
QCoro::Task<> tellEnd(QCoro::Task<T> task, Told told) {
  try {
    if constexpr (std::is_void_v<T>) {
      co_await task;
      *told = QStringLiteral("done");
    } else {
      const T value = co_await task;
      *told = wordsOf(value);
    }
  } catch (const DomainError& failure) {
    *told = failure.message();
  } catch (const SecretFailure& failure) {
    *told = QString::number(failure.status());
  } catch (const Cancelled&) {
    *told = QStringLiteral("cancelled");
  }
}

template <class T>
Told begin(QCoro::Task<T> task) {
  const Told told = std::make_shared<std::optional<QString>>();
  tellEnd(std::move(task), told);
  return told;
}

inline std::string endOf(const Told& told) {
  return waitFor([&] { return told->has_value(); }) ? (*told)->toStdString() : "no end";
}

/// Waits for the end of a task and tells it: its value, "done", its failure or "cancelled".
template <class T>
std::string endOf(QCoro::Task<T> task) {
  return endOf(begin(std::move(task)));
}

}  // namespace tarnwick::test
