#include "service/CustomerService.h"

#include "api/JSON.h"
#include "api/Requests.h"
#include "service/AccountTables.h"
#include "service/RequestBody.h"
#include "service/Routes.h"
#include "service/Usage.h"
#include "service/Validation.h"

namespace tarnwik::service {

namespace {

ServiceError unauthorized()
{
    return ServiceError(401, "unauthorized").with("WWW-Authenticate", "Bearer");
}

/// The token behind "Bearer ", or nothing.
QByteArray bearerToken(const QByteArray &authorization)
{
    constexpr qsizetype schemeLength = 7;
    if (authorization.left(schemeLength).toLower() != "bearer ")
        return {};
    return authorization.mid(schemeLength).trimmed();
}

void checkActive(const Account &account)
{
    if (account.status != QLatin1String("active"))
        throw ServiceError(403, "account_suspended", account);
}

void checkForm(const SignInRequest &request)
{
    require(isEmailAddress(request.email), "invalid_email");
    require(isPassword(request.password), "invalid_password");
    require(isDisplayName(request.deviceName), "invalid_device_name");
    require(isPlatform(request.platform), "invalid_platform");
}

} // namespace

CustomerService::CustomerService(const CustomerServiceOptions &options)
    : m_database(options.databasePath, options.seed, options.passwordCost)
    , m_now(options.now)
    , m_storeRoot(options.storeRoot)
{
}

ServiceResponse CustomerService::handle(const ServiceRequest &request) noexcept
{
    try {
        return answer(request);
    } catch (const ServiceError &error) {
        return error.response();
    } catch (const std::exception &error) {
        qWarning("The request failed: %s", error.what());
    }
    return ServiceError(500, "internal_error").response();
}

ServiceResponse CustomerService::answer(const ServiceRequest &request)
{
    const Route route = findRoute(request);
    return route.operation ? inSession(request, route.operation, route.pathId) : signIn(request);
}

ServiceResponse CustomerService::signIn(const ServiceRequest &request)
{
    const auto body = readBody<SignInRequest>(request);
    checkForm(body);
    const Login login = m_database.run([&](Database &database) {
        if (const auto delay = signInDelay(database, body.email, m_now())) {
            throw ServiceError(429, "too_many_attempts")
                .with("Retry-After", QByteArray::number(qint64(delay->count())));
        }
        return findLogin(database, body.email);
    });

    // Outside of the transaction, since it is slow on purpose.
    const bool isCorrect = isPasswordCorrect(body.password, login.passwordHash);
    if (!isCorrect || !login.accountId) {
        m_database.run([&](Database &database) { recordFailedSignIn(database, body.email, m_now()); });
        throw ServiceError(401, "invalid_credentials");
    }

    return m_database.run([&](Database &database) {
        const Moment now = m_now();
        countUsage(database, *login.accountId, now);
        const Account account = readAccount(database, *login.accountId);
        checkActive(account);
        forgetFailedSignIns(database, body.email);
        const QByteArray token = makeToken();
        insertSession(database, account.id, token, body.deviceName, body.platform, now);
        return ServiceResponse{200, encode(SessionResponse{QString::fromLatin1(token), account}), {}};
    });
}

ServiceResponse CustomerService::inSession(const ServiceRequest &request, Operation operation, qint64 pathId)
{
    const QByteArray token = bearerToken(request.authorization);
    return m_database.run([&](Database &database) {
        const auto accountId = findSession(database, token);
        if (!accountId)
            throw unauthorized();
        const Moment now = m_now();
        countUsage(database, *accountId, now);
        // Whoever may not come in may still go out.
        if (operation != endSession)
            checkActive(readAccount(database, *accountId));
        return operation({database, request, *accountId, token, pathId, now, m_storeRoot});
    });
}

bool CustomerService::setTunnelRunning(qint64 profileId, bool isRunning)
{
    return m_database.run(
        [&](Database &database) { return service::setTunnelRunning(database, profileId, isRunning, m_now()); });
}

} // namespace tarnwik::service
