#include "platform/secret/SecretServiceStore.h"

#include <QDBusArgument>

#include "platform/secret/SecretPrompt.h"
#include "platform/secret/SecretServiceCalls.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using namespace secretservice;
using QCoro::Task;

namespace {

constexpr auto kServiceKey = "service"_L1;
constexpr auto kAccountKey = "account"_L1;
constexpr auto kStoreKey = "store"_L1;

Attributes attributesOf(const SecretAttributes& which) {
  Attributes attributes;
  if (!which.service.isEmpty()) attributes.insert(kServiceKey, which.service);
  if (!which.account.isEmpty()) attributes.insert(kAccountKey, which.account);
  if (!which.store.isEmpty()) attributes.insert(kStoreKey, which.store);
  return attributes;
}

QString pathOf(const QDBusMessage& reply, qsizetype place) {
  return qvariant_cast<QDBusObjectPath>(reply.arguments().value(place)).path();
}

Paths pathsOf(const QDBusMessage& reply, qsizetype place) { return qdbus_cast<Paths>(reply.arguments().value(place)); }

/// Items that have certain attributes.
struct FoundItems {
  Paths open;
  Paths locked;
};

Task<FoundItems> search(SecretTalk talk, Attributes attributes) {
  const QVariantList arguments{QVariant::fromValue(attributes)};
  const QDBusMessage reply = co_await secretServiceCall(talk, "SearchItems"_L1, arguments);
  co_return FoundItems{pathsOf(reply, 0), pathsOf(reply, 1)};
}

/// Where new items go.
struct DefaultCollection {
  QString path;  ///< Leads nowhere where there is none.
  bool isLocked = false;
};

Task<DefaultCollection> defaultCollection(SecretTalk talk) {
  const QVariantList alias{u"default"_s};
  const QDBusMessage reply = co_await secretServiceCall(talk, "ReadAlias"_L1, alias);
  DefaultCollection found{.path = pathOf(reply, 0)};
  if (isNowhere(found.path)) co_return found;
  const QVariant locked = co_await secretProperty(talk, found.path, kCollection, "Locked"_L1);
  found.isLocked = locked.toBool();
  co_return found;
}

Task<Attributes> attributesAt(SecretTalk talk, QString item) {
  const QVariant value = co_await secretProperty(talk, item, kItem, "Attributes"_L1);
  co_return qdbus_cast<Attributes>(value);
}

/// Lets the user unlock these.
Task<> unlockAll(SecretTalk talk, Paths locked, std::stop_token stop) {
  const QVariantList arguments{QVariant::fromValue(locked)};
  const QDBusMessage reply = co_await secretServiceCall(talk, "Unlock"_L1, arguments);
  const QString owner = reply.service();
  const QString prompt = pathOf(reply, 1);
  co_await SecretPrompt::show(talk, owner, prompt, stop);
}

/// Lets the service make the collection that is missing, and the user choose its password.
Task<> makeCollection(SecretTalk talk, std::stop_token stop) {
  const QVariantMap properties{{u"org.freedesktop.Secret.Collection.Label"_s, u"Default"_s}};
  const QVariantList arguments{properties, u"default"_s};
  const QDBusMessage reply = co_await secretServiceCall(talk, "CreateCollection"_L1, arguments);
  const QString owner = reply.service();
  const QString prompt = pathOf(reply, 1);
  co_await SecretPrompt::show(talk, owner, prompt, stop);
}

Task<std::optional<SecretBytes>> readFrom(SecretTalk talk, Attributes attributes) {
  const FoundItems found = co_await search(talk, attributes);
  if (found.open.isEmpty()) {
    if (!found.locked.isEmpty()) throw SecretFailure(SecretFailure::Locked, true);
    // Some services find nothing while they are locked.
    const DefaultCollection home = co_await defaultCollection(talk);
    if (home.isLocked) throw SecretFailure(SecretFailure::Locked);
    co_return std::nullopt;
  }
  const std::shared_ptr<SecretSession> session = co_await SecretSession::open(talk);
  const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(session->path()))};
  const QString item = found.open.first().path();
  const QDBusMessage reply = co_await secretCall(talk, item, kItem, "GetSecret"_L1, arguments);
  const auto secret = qdbus_cast<Secret>(reply.arguments().value(0));
  co_return session->opened(secret);
}

/// What stands between the wish to write and the writing: items found, and the collection where they go.
struct WritingPlace {
  Paths found;
  QString collection;
};

Task<WritingPlace> placeFor(SecretTalk talk, Attributes attributes) {
  const FoundItems found = co_await search(talk, attributes);
  const DefaultCollection home = co_await defaultCollection(talk);
  if (home.isLocked || !found.locked.isEmpty()) throw SecretFailure(SecretFailure::Locked);
  if (isNowhere(home.path) && found.open.isEmpty()) throw SecretFailure(SecretFailure::Refused);
  co_return WritingPlace{found.open, home.path};
}

/// Asks the user for what `placeFor` would refuse.
Task<> prepare(SecretTalk talk, Attributes attributes, std::stop_token stop) {
  const FoundItems found = co_await search(talk, attributes);
  const DefaultCollection home = co_await defaultCollection(talk);
  Paths locked = found.locked;
  if (home.isLocked) locked.append(QDBusObjectPath(home.path));
  if (!locked.isEmpty()) co_await unlockAll(talk, locked, stop);
  if (isNowhere(home.path) && found.open.isEmpty() && found.locked.isEmpty()) co_await makeCollection(talk, stop);
}

Task<> writeInto(SecretTalk talk, SecretAttributes which, QString label, SecretBytes value, SecretStore::Asking asking,
                 std::stop_token stop) {
  // One item an account, whichever store it belongs to.
  const Attributes account = attributesOf({which.service, which.account, {}});
  if (asking == SecretStore::Asking::Allowed) {
    co_await prepare(talk, account, stop);
    talk.goOn();
  }
  const WritingPlace place = co_await placeFor(talk, account);
  Attributes attributes = attributesOf(which);
  attributes.insert(u"xdg:schema"_s, which.service);
  QString collection = place.collection;
  if (!place.found.isEmpty()) {
    // It is replaced only by one that has the same attributes and stands in the same collection.
    const QString item = place.found.first().path();
    attributes = co_await attributesAt(talk, item);
    collection = item.first(item.lastIndexOf(u'/'));
  }
  const std::shared_ptr<SecretSession> session = co_await SecretSession::open(talk);
  const QVariantMap properties{{u"org.freedesktop.Secret.Item.Label"_s, label},
                               {u"org.freedesktop.Secret.Item.Attributes"_s, QVariant::fromValue(attributes)}};
  const QVariantList arguments{properties, QVariant::fromValue(session->closed(value)), true};
  const QDBusMessage reply = co_await secretCall(talk, collection, kCollection, "CreateItem"_L1, arguments);
  const QString prompt = pathOf(reply, 1);
  if (isNowhere(prompt)) co_return;
  if (asking == SecretStore::Asking::Never) throw SecretFailure(SecretFailure::Refused);
  const QString owner = reply.service();
  co_await SecretPrompt::show(talk, owner, prompt, stop);
}

Task<QList<SecretAttributes>> listOf(SecretTalk talk, Attributes attributes) {
  const DefaultCollection home = co_await defaultCollection(talk);
  const FoundItems found = co_await search(talk, attributes);
  if (home.isLocked || !found.locked.isEmpty()) throw SecretFailure(SecretFailure::Locked);
  QList<SecretAttributes> listed;
  for (const QDBusObjectPath& item : found.open) {
    const QString path = item.path();
    const Attributes kept = co_await attributesAt(talk, path);
    listed.append({kept.value(kServiceKey), kept.value(kAccountKey), kept.value(kStoreKey)});
  }
  co_return listed;
}

Task<> removeFrom(SecretTalk talk, Attributes attributes) {
  const FoundItems found = co_await search(talk, attributes);
  for (const QDBusObjectPath& item : found.open) {
    const QString path = item.path();
    const QVariantList nothing;
    const QDBusMessage reply = co_await secretCall(talk, path, kItem, "Delete"_L1, nothing);
    // It would ask the user first.
    if (!isNowhere(pathOf(reply, 0))) throw SecretFailure(SecretFailure::Refused);
  }
  if (!found.locked.isEmpty()) throw SecretFailure(SecretFailure::Locked);
}

Task<> unlockHome(SecretTalk talk, std::stop_token stop) {
  const DefaultCollection home = co_await defaultCollection(talk);
  if (!home.isLocked) co_return;
  const Paths locked{QDBusObjectPath(home.path)};
  co_await unlockAll(talk, locked, stop);
}

Task<bool> isHomeLocked(SecretTalk talk) {
  const DefaultCollection home = co_await defaultCollection(talk);
  co_return home.isLocked;
}

}  // namespace

SecretServiceStore::SecretServiceStore(const QDBusConnection& session, std::chrono::milliseconds patience)
    : session_(session), patience_(patience) {}

Task<std::optional<SecretBytes>> SecretServiceStore::read(SecretAttributes which) {
  return readFrom({session_, patience_}, attributesOf(which));
}

Task<> SecretServiceStore::write(SecretAttributes which, QString label, SecretBytes value, Asking asking,
                                 std::stop_token stop) {
  return writeInto({session_, patience_}, std::move(which), std::move(label), std::move(value), asking, stop);
}

Task<QList<SecretAttributes>> SecretServiceStore::list(SecretAttributes which) {
  return listOf({session_, patience_}, attributesOf(which));
}

Task<> SecretServiceStore::remove(SecretAttributes which) {
  return removeFrom({session_, patience_}, attributesOf(which));
}

Task<> SecretServiceStore::unlock(std::stop_token stop) { return unlockHome({session_, patience_}, stop); }

Task<bool> SecretServiceStore::isLocked() { return isHomeLocked({session_, patience_}); }

}  // namespace tarnwick
