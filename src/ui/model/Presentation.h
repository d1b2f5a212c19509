#pragma once

#include "api/AccountModels.h"
#include "api/NodeModels.h"

#include <QString>

#include <optional>

/// How the service's records read on the screens and in the menus: every text that is more than a field as it stands.
namespace tarnwik::presentation {

/// "Region · name": how a node is called where the user chooses one. The region's words are capitalised, the name is
/// left alone.
QString nodeCaption(const ExitNode &node);

/// "provider · region · endpoint", each as the server wrote it.
QString nodeDetail(const ExitNode &node);

/// "name · runtime", the runtime with blanks for its underscores.
QString runtimeLine(const ExitNode &node);

/// The node's status with its words capitalised.
QString nodeStatusText(const ExitNode &node);

/// Whether the node serves: its status is "online" to the letter. "Online" is another word of the server's.
bool isOnline(const ExitNode &node);

/// "platform · 1 profile", "platform · 2 profiles".
QString deviceDetail(const CustomerDevice &device);

/// How much of the quota is used, 1 for all and more. 0 without a quota. Below 0 when the server counts below 0: the
/// meter draws that as empty.
double usageFraction(const Account &account);

/// "5 GB used of 50 GB": what was used by ByteFormatter, and the plan's size as the server tells it. That is not the
/// quota that usageFraction() goes by.
QString usageCaption(const Account &account);

/// "5 GB of 50 GB": the same in the menu.
QString usageMenuText(const Account &account);

/// "Account active · subscription past due": the account's status as it stands, the subscription's with blanks for its
/// underscores.
QString accountStatusLine(const Account &account);

/// "50 GB".
QString planText(const Account &account);

/// Who bills the account; "Not connected" when nobody does.
QString billingProviderText(const Account &account);

/// Where the user manages the billing; absent when the server named nothing, or nothing that is a URL.
std::optional<QString> billingPortalURL(const Account &account);

} // namespace tarnwik::presentation
