#include "system/SmcTemperatures.h"

#include <QtEndian>
#include <cmath>
#include <cstring>

namespace tarnwick {
namespace {

// The offsets of a call's fields in its record.
constexpr std::size_t kKey = 0;
constexpr std::size_t kDataSize = 28;
constexpr std::size_t kDataType = 32;
constexpr std::size_t kResult = 40;
constexpr std::size_t kCommand = 42;
constexpr std::size_t kBytes = 48;

constexpr quint8 kReadBytes = 5;
constexpr quint8 kReadInfo = 9;
constexpr quint32 kMostBytes = 32;

constexpr double kLowest = -40.0;
constexpr double kHighest = 150.0;

constexpr const char* kPrimaryKeys[] = {"Tp09", "Tp0T", "Tp01", "Tp05", "Tp0D", "Tp0H", "Tp06", "Tp0E"};
constexpr const char* kFallbackKeys[] = {"TC0P", "TC0D", "TC0E"};

constexpr quint32 code(const char (&text)[5]) {
  quint32 value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<quint8>(text[i]);
  return value;
}

/// Numbers of a record are in the machine's own order; a key's or a type's characters make one number, first highest.
template <class T>
T readField(const SmcRecord& record, std::size_t at) {
  T value;
  std::memcpy(&value, record.data() + at, sizeof value);
  return value;
}

void setField(SmcRecord& record, std::size_t at, quint32 value) {
  std::memcpy(record.data() + at, &value, sizeof value);
}

bool ask(SmcTransport& connection, const SmcRecord& question, SmcRecord& answer) {
  std::size_t answered = answer.size();
  answer = {};
  return connection.call(question, answer, answered) == 0 && answered == answer.size() && answer[kResult] == 0;
}

template <std::size_t Count>
quint32 readKeys(SmcTransport& connection, const char* const (&keys)[Count], double* values, quint32 capacity) {
  quint32 count = 0;
  for (const char* key : keys) {
    if (count >= capacity) break;
    if (read_key(connection, key, values + count) != 0) ++count;
  }
  return count;
}

}  // namespace

int read_key(SmcTransport& connection, const char* key, double* out) {
  const quint32 name = qFromBigEndian<quint32>(key);
  SmcRecord question{};
  SmcRecord answer{};
  setField(question, kKey, name);
  question[kCommand] = kReadInfo;
  if (!ask(connection, question, answer)) return 0;
  const auto size = readField<quint32>(answer, kDataSize);
  const auto type = readField<quint32>(answer, kDataType);
  if (size < 1 || size > kMostBytes) return 0;

  question = {};
  setField(question, kKey, name);
  setField(question, kDataSize, size);
  question[kCommand] = kReadBytes;
  if (!ask(connection, question, answer)) return 0;

  double value = 0.0;
  if (type == code("sp78") && size == 2) {
    value = qFromBigEndian<qint16>(answer.data() + kBytes) / 256.0;
  } else if (type == code("flt ") && size == 4) {
    value = static_cast<double>(readField<float>(answer, kBytes));
  } else {
    return 0;
  }
  // A sensor that reports nonsense is as good as absent.
  if (!std::isfinite(value) || value < kLowest || value > kHighest) return 0;
  *out = value;
  return 1;
}

quint32 tw_smc_temperatures(SmcTransport& connection, double* values, quint32 capacity) {
  if (!values || capacity == 0 || !connection.open()) return 0;
  quint32 count = readKeys(connection, kPrimaryKeys, values, capacity);
  if (count == 0) count = readKeys(connection, kFallbackKeys, values, capacity);
  connection.close();
  return count;
}

}  // namespace tarnwick
