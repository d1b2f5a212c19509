#include "core/AppModel.h"

#include "async/Child.h"
#include "async/OwnerGuard.h"
#include "core/AppRuntime.h"
#include "core/FailureText.h"
#include "core/Platform.h"
#include "platform/PlatformServices.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <utility>

namespace tarnwik {

namespace {

const QString serverURLKey = QStringLiteral("TarnwikServerURL");
const QString authTokenKey = QStringLiteral("TarnwikAuthToken");

UserDefaults &userDefaults()
{
    return *PlatformServices::current().userDefaults;
}

} // namespace

AppModel::AppModel(std::optional<TarnwikAPIClient> apiClient, std::optional<KeychainStore> keychain,
                   std::unique_ptr<VPNController> vpnController)
    : m_serverURLString(userDefaults().string(serverURLKey).value_or(AppRuntime::defaultServerURLString()))
    , m_authToken(userDefaults().string(authTokenKey))
    , m_apiClient(apiClient ? *apiClient : TarnwikAPIClient(AppRuntime::defaultServerURL()))
    , m_keychain(keychain.value_or(KeychainStore()))
    , m_vpnController(vpnController ? std::move(vpnController) : std::make_unique<VPNController>())
{
    if (const auto url = URL::fromString(m_serverURLString))
        m_apiClient = m_apiClient.with(*url, m_authToken);
}

AppModel::~AppModel()
{
    stopUsageRefreshLoop();
}

std::optional<ExitNode> AppModel::selectedNode() const
{
    const QList<ExitNode> nodes = m_nodes;
    if (nodes.isEmpty())
        return std::nullopt;
    const auto selected = std::find_if(nodes.begin(), nodes.end(),
                                       [id = m_selectedNodeID.value()](const auto &node) { return node.id == id; });
    // A stale choice never leaves the user without a node.
    return selected != nodes.end() ? *selected : nodes.first();
}

Task<> AppModel::runLoading(std::function<Task<>()> operation, std::stop_token token)
{
    const async::OwnerGuard guard(this);
    m_isLoading = true;
    m_errorMessage = std::nullopt;
    std::exception_ptr failure;
    try {
        co_await operation();
    } catch (...) {
        failure = std::current_exception();
    }
    if (!guard.isAlive())
        co_return;
    if (failure) {
        if (const auto text = failureText(failure, token))
            m_errorMessage = text;
    }
    m_isLoading = false;
}

Task<> AppModel::signIn(QString email, QString password, std::stop_token token)
{
    return runLoading([=, this] { return performSignIn(email, password, token); }, token);
}

Task<> AppModel::performSignIn(QString email, QString password, std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const auto url = URL::fromString(m_serverURLString);
    if (!url)
        throw TarnwikClientError::invalidServerURL();
    const QString deviceName = Platform::current().displayName() + QStringLiteral(" client");
    const SessionResponse session = co_await m_apiClient.with(*url, std::nullopt)
                                        .signIn(email, password, deviceName, Platform::current().apiValue(), token);
    guard.check();
    m_authToken = session.token;
    m_account = session.account;
    m_apiClient = m_apiClient.with(*url, session.token);
    userDefaults().setString(m_serverURLString, serverURLKey);
    userDefaults().setString(session.token, authTokenKey);
    co_await refresh(token);
    guard.check();
    startUsageRefreshLoop();
}

Task<> AppModel::refresh(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    const Account account = co_await m_apiClient.account(token);
    guard.check();
    m_account = account;

    async::Child<QList<ExitNode>> nodes(
        token, [client = m_apiClient](std::stop_token childToken) { return client.nodes(std::move(childToken)); });
    async::Child<QList<CustomerDevice>> devices(
        token, [client = m_apiClient](std::stop_token childToken) { return client.devices(std::move(childToken)); });
    std::exception_ptr nodesFailure;
    try {
        const QList<ExitNode> list = co_await nodes.result();
        guard.check();
        m_nodes = list;
    } catch (...) {
        nodesFailure = std::current_exception();
    }
    if (nodesFailure) {
        devices.stop();
        co_await devices.settle();
        std::rethrow_exception(nodesFailure);
    }
    const QList<CustomerDevice> list = co_await devices.result();
    guard.check();
    m_devices = list;
    if (!m_selectedNodeID.value() && !m_nodes.value().isEmpty())
        m_selectedNodeID = m_nodes.value().first().id;
}

Task<> AppModel::refreshFromUI(std::stop_token token)
{
    return runLoading([=, this] { return refresh(token); }, token);
}

Task<> AppModel::signOut(std::stop_token token)
{
    return runLoading([=, this] { return performSignOut(token); }, token);
}

Task<> AppModel::performSignOut(std::stop_token token)
{
    const async::OwnerGuard guard(this);
    stopUsageRefreshLoop();
    try {
        co_await m_apiClient.signOut(token);
    } catch (...) {
        // The session ends here whether or not the server hears of it.
    }
    guard.check();
    m_authToken = std::nullopt;
    m_account = std::nullopt;
    m_nodes = QList<ExitNode>();
    m_devices = QList<CustomerDevice>();
    m_selectedNodeID = std::nullopt;
    std::exception_ptr defaultsFailure;
    try {
        userDefaults().removeObject(authTokenKey);
    } catch (...) {
        // The tunnel must go down all the same; then the user is told that the token is still on the disk.
        defaultsFailure = std::current_exception();
    }
    try {
        // Without the token: whoever stops waiting for the sign-out still wants the tunnel down.
        co_await m_vpnController->disconnect();
    } catch (...) {
        // A tunnel that cannot be stopped does not keep anybody signed in.
    }
    if (defaultsFailure)
        std::rethrow_exception(defaultsFailure);
}

} // namespace tarnwik
