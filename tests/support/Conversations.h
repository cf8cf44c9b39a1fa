#pragma once

#include <QJsonValue>
#include <QList>
#include <QMap>
#include <QString>

#include "services/RemoteValue.h"
#include "services/ServiceSession.h"

namespace tarnwick::test {

/// One request and what the service says to it; an answer that is a number is a status without a body.
struct Exchange {
  QString request;  ///< As `told` tells it.
  QString answer;
};

/// A fetch with the credential "key", on 24 November 2026 at 10:24 in UTC, in American English.
struct Conversation {
  QString kind;
  QMap<QString, QString> options;
  QList<Exchange> exchanges;
  QString shown;  ///< As `told` tells it.
};

/// At least one of every service.
QList<Conversation> conversations();

/// What comes of a conversation. The test fails where that is no value.
RemoteValue outcomeOf(const Conversation& conversation);

/// "GET https://… Bearer key · Name: value", "POST https://… {…}".
QString told(const ServiceCall& call);
/// What a tile and its panel get: headline | subtitle | detail | metrics | rows | numbers | windows, without what is
/// empty at the end. A number is told with its day or moment where that is known.
QString told(const RemoteValue& value);
/// An object or an array. The test fails for what is neither.
QJsonValue parsed(const QString& text);

}  // namespace tarnwick::test
