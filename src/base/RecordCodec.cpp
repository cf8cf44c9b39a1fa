#include "base/RecordCodec.h"

#include <QCoreApplication>
#include <QJsonParseError>
#include <cmath>
#include <limits>

#include "base/DomainError.h"
#include "base/UuidText.h"

namespace tarnwick {
namespace {

struct RecordCodecWords {
  Q_DECLARE_TR_FUNCTIONS(RecordCodec)
};

template <class Integer>
Integer decodeInteger(const QJsonValue& value, const JsonPath& path) {
  if (!value.isDouble()) failKind(path, JsonKind::Integer);
  const double number = value.toDouble();
  // Both bounds of 32-bit integers are exact as doubles.
  if (std::trunc(number) != number || number < static_cast<double>(std::numeric_limits<Integer>::min()) ||
      number > static_cast<double>(std::numeric_limits<Integer>::max())) {
    failKind(path, JsonKind::Integer);
  }
  return static_cast<Integer>(number);
}

const char* sentence(JsonKind wanted) {
  switch (wanted) {
    case JsonKind::Boolean:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not true or false.");
    case JsonKind::Number:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not a number.");
    case JsonKind::Integer:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not a whole number in its range.");
    case JsonKind::Text:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not a text.");
    case JsonKind::Uuid:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not an identity.");
    case JsonKind::Array:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not a list.");
    case JsonKind::Object:
      return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is not an object.");
    case JsonKind::KnownValue:
      break;
  }
  return QT_TRANSLATE_NOOP("RecordCodec", "The value of “%1” is unknown.");
}

}  // namespace

QString JsonPath::text() const {
  if (!parent_) return {};
  QString text = parent_->text();
  if (index_ >= 0) return text + u'[' + QString::number(index_) + u']';
  if (!text.isEmpty()) text += u'.';
  return text + key_.toString();
}

void failMissing(const JsonPath& path) {
  throw DomainError::invalid(RecordCodecWords::tr("The value of “%1” is missing.").arg(path.text()));
}

void failKind(const JsonPath& path, JsonKind wanted) {
  const QString place = path.text();
  if (place.isEmpty()) {
    throw DomainError::invalid(RecordCodecWords::tr("The document is not in the expected format."));
  }
  throw DomainError::invalid(RecordCodecWords::tr(sentence(wanted)).arg(place));
}

QString wellFormed(const QString& text) { return text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8()); }

QJsonValue RecordCodec::parse(const QByteArray& json) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (error.error != QJsonParseError::NoError) {
    throw DomainError::invalid(RecordCodecWords::tr("The document is not valid JSON: %1 (byte %2).")
                                   .arg(error.errorString())
                                   .arg(error.offset));
  }
  return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QByteArray RecordCodec::write(const QJsonValue& value, QJsonDocument::JsonFormat format) {
  const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
  return document.toJson(format);
}

bool JsonCodec<bool>::decode(const QJsonValue& value, const JsonPath& path) {
  if (!value.isBool()) failKind(path, JsonKind::Boolean);
  return value.toBool();
}

int JsonCodec<int>::decode(const QJsonValue& value, const JsonPath& path) { return decodeInteger<int>(value, path); }

quint32 JsonCodec<quint32>::decode(const QJsonValue& value, const JsonPath& path) {
  return decodeInteger<quint32>(value, path);
}

double JsonCodec<double>::decode(const QJsonValue& value, const JsonPath& path) {
  if (!value.isDouble() || !std::isfinite(value.toDouble())) failKind(path, JsonKind::Number);
  return value.toDouble();
}

QJsonValue JsonCodec<double>::encode(double value, const JsonPath& path) {
  if (!std::isfinite(value)) failKind(path, JsonKind::Number);
  return value;
}

QString JsonCodec<QString>::decode(const QJsonValue& value, const JsonPath& path) {
  if (!value.isString()) failKind(path, JsonKind::Text);
  return wellFormed(value.toString());
}

QUuid JsonCodec<QUuid>::decode(const QJsonValue& value, const JsonPath& path) {
  if (!value.isString()) failKind(path, JsonKind::Uuid);
  const auto id = UuidText::read(value.toString());
  if (!id) failKind(path, JsonKind::Uuid);
  return *id;
}

QJsonValue JsonCodec<QUuid>::encode(const QUuid& value, const JsonPath&) { return UuidText::write(value); }

}  // namespace tarnwick
