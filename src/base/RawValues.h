#pragma once

#include <QLatin1StringView>
#include <QStringView>
#include <optional>
#include <type_traits>

namespace tarnwick {

/// One case of an enumeration and the text that stands for it in files.
template <class E>
struct RawValue {
  constexpr RawValue(E enumerator, const char* raw) : value(enumerator), text(raw) {}

  E value;
  QLatin1StringView text;
};

/// Specialised beside an enumeration that is stored as text: `static constexpr std::array<RawValue<E>, N> table`.
template <class E>
struct RawValues;

template <class E>
concept RawEnum = std::is_enum_v<E> && requires {
  RawValues<E>::table;
};

/// The stored text of a case; empty for a value that is no case.
template <RawEnum E>
constexpr QLatin1StringView rawText(E value) {
  for (const RawValue<E>& entry : RawValues<E>::table) {
    if (entry.value == value) return entry.text;
  }
  return {};
}

/// The case that a stored text means, if any. Case matters.
template <RawEnum E>
std::optional<E> fromRawText(QStringView text) {
  for (const RawValue<E>& entry : RawValues<E>::table) {
    if (text == entry.text) return entry.value;
  }
  return std::nullopt;
}

}  // namespace tarnwick
