#include "platform/PlatformServices.h"

#include <QtGlobal>

#include <utility>

namespace tarnwik {

namespace {

const PlatformServices *s_current = nullptr;

} // namespace

PlatformServices::PlatformServices() = default;
PlatformServices::~PlatformServices() = default;
PlatformServices::PlatformServices(const PlatformServices &) = default;
PlatformServices &PlatformServices::operator=(const PlatformServices &) = default;

const PlatformServices &PlatformServices::current()
{
    Q_ASSERT_X(s_current, "PlatformServices", "no ScopedPlatform lives");
    return *s_current;
}

ScopedPlatform::ScopedPlatform(const PlatformServices &services)
    : m_services(services)
    , m_previous(std::exchange(s_current, &m_services))
{
}

ScopedPlatform::~ScopedPlatform()
{
    s_current = m_previous;
}

} // namespace tarnwik
