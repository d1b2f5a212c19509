#pragma once

#include "core/AppModel.h"
#include "store/AppStoreSubscriptionStore.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tarnwik::cli {

// What the commands print of a model, as text for people and as JSON for programs. JSON has the records under their
// wire keys; text has every string of the server and of the App Store as plain text.

QString statusText(const AppModel &model);
QJsonObject statusJSON(const AppModel &model);

QString accountText(const Account &account);

QString nodesText(const AppModel &model);
QJsonArray nodesJSON(const AppModel &model);

QString devicesText(const AppModel &model);
QJsonArray devicesJSON(const AppModel &model);

/// The plans that the App Store sells.
QString subscriptionsText(const AppStoreSubscriptionStore &store);
QJsonArray subscriptionsJSON(const AppStoreSubscriptionStore &store);

/// One line for watch: the tunnel's status and the usage.
QString watchText(const AppModel &model);

} // namespace tarnwik::cli
