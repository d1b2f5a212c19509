#include "ui/controls/ControlsWindow.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QQuickItem>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

using namespace std::chrono_literals;

void turnEventLoop(std::chrono::milliseconds duration)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < duration.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// Counts what wakes the processor while nobody does anything: timers, and frames.
class WakeUps : public QObject
{
public:
    WakeUps() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Timer || event->type() == QEvent::UpdateRequest)
            ++m_count;
        return false;
    }

    /// How many there are in \a duration.
    int during(std::chrono::milliseconds duration)
    {
        m_count = 0;
        turnEventLoop(duration);
        return m_count;
    }

private:
    int m_count = 0;
};

const QByteArray everyControl = R"(
    Column {
        Button { text: "Restore"; symbol: "arrow.clockwise" }
        ProminentButton { objectName: "button"; text: "Connect"; symbol: "power" }
        ToolButton { symbol: "arrow.clockwise"; Accessible.name: "Refresh" }
        LinkButton { text: "Email support" }
        SidebarRow { text: "Account"; symbol: "person.crop.circle" }
        TextField { objectName: "field"; placeholderText: "Email" }
        PasswordField { placeholderText: "Password" }
        Picker { model: ["a", "b"] }
        Meter { width: 100; value: 0.5; caption: "1 GB used of 2 GB" }
        StatusLabel { symbol: "checkmark.circle.fill"; text: "Active" }
        EmptyState { width: 100; symbol: "network.slash"; title: "No nodes" }
        ErrorText { width: 100; text: "Bad." }
        ElidedLabel { width: 20; text: "A long name" }
        Spinner { visible: false }
    })";

} // namespace

TEST(IdleControls, wakeNothing)
{
    ControlsWindow window(everyControl);
    turnEventLoop(300ms);
    EXPECT_EQ(WakeUps().during(1s), 0);
}

TEST(IdleControls, wakeNothingAfterTheSpinnerIsGone)
{
    ControlsWindow window(everyControl);
    window.item(QStringLiteral("button"))->setProperty("busy", true);
    turnEventLoop(100ms);
    WakeUps wakeUps;
    EXPECT_GE(wakeUps.during(500ms), 3) << "The spinner turns.";

    window.item(QStringLiteral("button"))->setProperty("busy", false);
    turnEventLoop(100ms);
    EXPECT_EQ(wakeUps.during(500ms), 0);
}

TEST(IdleControls, wakeNothingForASpinnerInAHiddenWindow)
{
    ControlsWindow window("Spinner {}");
    turnEventLoop(100ms);
    WakeUps wakeUps;
    EXPECT_GE(wakeUps.during(500ms), 3) << "The spinner turns.";

    window.view().hide();
    turnEventLoop(100ms);
    EXPECT_EQ(wakeUps.during(500ms), 0);
}

TEST(IdleControls, wakeNothingForARestingCursor)
{
    ControlsWindow window(everyControl);
    window.view().requestActivate();
    turnEventLoop(100ms);
    auto *field = window.item(QStringLiteral("field"));
    field->forceActiveFocus();
    ASSERT_TRUE(field->property("cursorVisible").toBool());
    WakeUps wakeUps;
    EXPECT_GE(wakeUps.during(1200ms), 2) << "The cursor blinks.";

    window.setTheme("reducesMotion", true);
    turnEventLoop(200ms);
    EXPECT_EQ(wakeUps.during(1200ms), 0);
}

} // namespace tarnwik::test
