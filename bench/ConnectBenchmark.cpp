// What the client itself adds to a connect: server, keychain and VPN subsystem answer at once, so that all the time
// that passes is the client's own, with its keys, its records and its turns of the event loop.

#include "api/JSON.h"
#include "core/AppModel.h"
#include "support/EventLoop.h"
#include "support/RecordSamples.h"
#include "support/TestPlatform.h"

#include <benchmark/benchmark.h>

namespace {

using namespace tarnwik;

QByteArray answerTo(const QString &request)
{
    if (request.endsWith(QStringLiteral("/session")))
        return test::sampleJSON<AccountResponse>();
    if (request.endsWith(QStringLiteral("/nodes")))
        return test::sampleJSON<NodeListResponse>();
    if (request.startsWith(QStringLiteral("POST")) && request.endsWith(QStringLiteral("/devices")))
        return test::sampleJSON<DeviceCreateResponse>();
    return request.endsWith(QStringLiteral("/devices")) ? R"({"devices":[]})"
                                                        : test::sampleJSON<DeviceProfileResponse>();
}

/// The longest connect there is: a key pair is made and a device registered each time.
void connectWithANewDevice(benchmark::State &state)
{
    test::TestPlatform platform;
    platform.httpSession->handler = [](test::FakeHTTPSession::Exchange &exchange) {
        exchange.answer(200, answerTo(exchange.summary()));
    };
    platform.userDefaults->strings.insert(QStringLiteral("TarnwikAuthToken"), QStringLiteral("token"));
    AppModel model;
    test::run(model.refresh());
    for ([[maybe_unused]] const auto iteration : state) {
        test::run(model.connect());
        if (model.errorMessage())
            state.SkipWithError(model.errorMessage()->toUtf8().constData());
        platform.httpSession->exchanges.clear();
    }
}

} // namespace

BENCHMARK(connectWithANewDevice)->Unit(benchmark::kMillisecond);
