#pragma once

#include <QObject>

#include <memory>

namespace tarnwik {

class Desktop;

/// The desktop as QML sees it. Lives on the main thread.
class DesktopFacade final : public QObject
{
    Q_OBJECT

public:
    explicit DesktopFacade(std::shared_ptr<Desktop> desktop);

    /// Opens a link with the program that the user has chosen for it; false when there is none, or when its kind is
    /// none that the program opens.
    Q_INVOKABLE bool openURL(const QString &url);

private:
    std::shared_ptr<Desktop> m_desktop;
};

} // namespace tarnwik
