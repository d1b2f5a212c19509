#pragma once

#include "api/TarnwikAPIClient.h"
#include "async/Task.h"
#include "core/AppSection.h"
#include "secure/KeychainStore.h"
#include "tunnel/VPNController.h"

#include <QObject>
#include <QPointer>
#include <QProperty>

#include <functional>
#include <memory>
#include <optional>

namespace tarnwik {

/// The client's session: server, token, account, nodes and devices, what the user has chosen, and the loading and
/// error state that every screen shows.
///
/// There is one per program. Observed properties notify only when a write changes their value. The operations of the
/// screens never throw: what goes wrong stands in errorMessage() until the next of them starts. Nothing guards against
/// overlapping operations; the last write wins. Lives on the main thread. Its end stops the usage refresh loop, and
/// operations under way end without touching it.
///
/// The members connect() and disconnect() hide QObject's: write QObject::connect().
class AppModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString serverURLString READ serverURLString WRITE setServerURLString NOTIFY serverURLStringChanged)
    Q_PROPERTY(std::optional<QString> authToken READ authToken NOTIFY authTokenChanged)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY authTokenChanged)
    Q_PROPERTY(std::optional<tarnwik::Account> account READ account NOTIFY accountChanged)
    Q_PROPERTY(QList<tarnwik::ExitNode> nodes READ nodes NOTIFY nodesChanged)
    Q_PROPERTY(QList<tarnwik::CustomerDevice> devices READ devices NOTIFY devicesChanged)
    Q_PROPERTY(
        std::optional<qint64> selectedNodeID READ selectedNodeID WRITE setSelectedNodeID NOTIFY selectedNodeIDChanged)
    Q_PROPERTY(
        tarnwik::AppSection selectedSection READ selectedSection WRITE setSelectedSection NOTIFY selectedSectionChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(std::optional<QString> errorMessage READ errorMessage NOTIFY errorMessageChanged)

public:
    /// Restores server and token from the user defaults; sends nothing and starts nothing. What is left out is made
    /// with its defaults.
    explicit AppModel(std::optional<TarnwikAPIClient> apiClient = {}, std::optional<KeychainStore> keychain = {},
                      std::unique_ptr<VPNController> vpnController = {});
    ~AppModel() override;

    /// The server as shown and edited. A change takes effect, and is stored, at the next sign-in.
    QString serverURLString() const { return m_serverURLString; }
    void setServerURLString(const QString &text) { m_serverURLString = text; }

    /// The session's bearer token; even an empty one is a session.
    std::optional<QString> authToken() const { return m_authToken; }
    bool isSignedIn() const { return m_authToken.value().has_value(); }

    std::optional<Account> account() const { return m_account; }

    /// The exit nodes, in the server's order.
    QList<ExitNode> nodes() const { return m_nodes; }

    /// The account's devices, in the server's order, then those made here since the last refresh.
    QList<CustomerDevice> devices() const { return m_devices; }

    std::optional<qint64> selectedNodeID() const { return m_selectedNodeID; }
    void setSelectedNodeID(std::optional<qint64> id) { m_selectedNodeID = id; }

    /// The node that selectedNodeID() names, else the first; nothing only when there are no nodes.
    std::optional<ExitNode> selectedNode() const;

    AppSection selectedSection() const { return m_selectedSection; }
    void setSelectedSection(AppSection section) { m_selectedSection = section; }

    /// An operation of the screens is under way.
    bool isLoading() const { return m_isLoading; }

    /// What went wrong in the last operation of the screens.
    std::optional<QString> errorMessage() const { return m_errorMessage; }

    /// The tunnel's controller, which lives as long as the model.
    VPNController *vpnController() const { return m_vpnController.get(); }

    /// Signs in at serverURLString() with e-mail address and password as typed, then refreshes and starts the loop.
    Task<> signIn(QString email, QString password, std::stop_token token = {});

    /// Fetches the account, then nodes and devices at the same time. Throws what the client throws.
    Task<> refresh(std::stop_token token = {});

    /// The same for the screens.
    Task<> refreshFromUI(std::stop_token token = {});

    /// Ends the session here, whatever the server and the tunnel say to it.
    Task<> signOut(std::stop_token token = {});

    /// Connects through the selected node with this computer's device, which is registered when there is none.
    Task<> connect(std::stop_token token = {});

    /// Stops the tunnel; all else stays.
    Task<> disconnect(std::stop_token token = {});

    /// Fetches the account every 20 seconds from now on, silently, while signed in. One loop runs at the most.
    void startUsageRefreshLoop();
    void stopUsageRefreshLoop();

    /// Fetches the account. Throws what the client throws.
    Task<> refreshAccount(std::stop_token token = {});

    /// Posts an App Store transaction as the store signed it, and takes the account that comes back. Throws what the
    /// client throws.
    Task<> syncAppleTransaction(QString signedTransactionJWS, std::stop_token token = {});

Q_SIGNALS:
    void serverURLStringChanged();
    void authTokenChanged();
    void accountChanged();
    void nodesChanged();
    void devicesChanged();
    void selectedNodeIDChanged();
    void selectedSectionChanged();
    void isLoadingChanged();
    void errorMessageChanged();

private:
    Task<> runLoading(std::function<Task<>()> operation, std::stop_token token);
    Task<> performSignIn(QString email, QString password, std::stop_token token);
    Task<> performSignOut(std::stop_token token);
    Task<> performConnect(std::stop_token token);
    Task<CustomerDevice> preferredDevice(std::stop_token token);
    std::optional<CustomerDevice> candidateDevice() const;
    bool hasPrivateKey(const CustomerDevice &device) const;
    static QString privateKeyAccount(qint64 deviceID);
    static Task<> usageRefreshLoop(QPointer<AppModel> model, std::stop_token token);
    Task<> refreshAccountInBackground(std::stop_token token);

    // Declared with macros, which end without a semicolon as the moc wants it.
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QString, m_serverURLString, &AppModel::serverURLStringChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<QString>, m_authToken, &AppModel::authTokenChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<Account>, m_account, &AppModel::accountChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QList<ExitNode>, m_nodes, &AppModel::nodesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, QList<CustomerDevice>, m_devices, &AppModel::devicesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<qint64>, m_selectedNodeID, &AppModel::selectedNodeIDChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, AppSection, m_selectedSection, AppSection::connect,
                                         &AppModel::selectedSectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(AppModel, bool, m_isLoading, false, &AppModel::isLoadingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(AppModel, std::optional<QString>, m_errorMessage, &AppModel::errorMessageChanged)

    TarnwikAPIClient m_apiClient;
    KeychainStore m_keychain;
    std::optional<std::stop_source> m_usageRefreshTask;
    std::unique_ptr<VPNController> m_vpnController;
};

} // namespace tarnwik
