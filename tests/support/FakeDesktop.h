#pragma once

#include "platform/Desktop.h"

#include <QStringList>

namespace tarnwik::test {

/// A desktop that records what is asked of it and opens every address, unless the test says otherwise.
class FakeDesktop final : public Desktop
{
public:
    QStringList openedURLs;
    /// Whether addresses are opened.
    bool opens = true;
    /// What else was asked, in order: "regular", "activate", "terminate".
    QStringList operations;

    bool openURL(const QString &url) override
    {
        openedURLs << url;
        return opens;
    }
    void setRegularActivationPolicy() override { operations << QStringLiteral("regular"); }
    void activateIgnoringOtherApps() override { operations << QStringLiteral("activate"); }
    void terminate() override { operations << QStringLiteral("terminate"); }
};

} // namespace tarnwik::test
