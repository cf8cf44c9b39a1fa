#pragma once

#include "services/Provider.h"

namespace tarnwick {

/// The services that this program knows, one row each. A new one is a file in providers/ that gives its row, and a line
/// in the table.
const QList<Provider>& allProviders();

/// The first row that serves this kind; null for a kind that no service has. Lives as long as the table.
const Provider* providerFor(QStringView kind, const QList<Provider>& table = allProviders());

/// `widget` as its provider wants it stored; one without a provider as it is. Throws DomainError with the provider's
/// sentence.
DockWidget configured(const DockWidget& widget, const QList<Provider>& table = allProviders());

}  // namespace tarnwick
