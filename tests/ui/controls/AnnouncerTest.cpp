#include "ui/controls/ControlsWindow.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QQuickItem>
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>

#include <gtest/gtest.h>

namespace tarnwik::test {

namespace {

struct Announcement
{
    QAccessible::Event kind;
    QString text;
};

QList<Announcement> announcements;

void record(QAccessibleEvent *event)
{
    if (event->type() != QAccessible::Alert && event->type() != QAccessible::ObjectShow)
        return;
    if (auto *interface = QAccessible::queryAccessibleInterface(event->object());
        interface && interface->role() == QAccessible::AlertMessage)
        announcements.append({event->type(), interface->text(QAccessible::Name)});
}

class ErrorText : public testing::Test
{
protected:
    void SetUp() override
    {
        announcements.clear();
        // As a screen reader would, on a platform that has none.
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
        m_before = QAccessible::installUpdateHandler(record);
    }

    void TearDown() override
    {
        QAccessible::installUpdateHandler(m_before);
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(false);
    }

    /// What was read out at the last change, by the kind of the event.
    static QStringList readOut(QAccessible::Event kind)
    {
        QStringList texts;
        for (const auto &announcement : std::as_const(announcements)) {
            if (announcement.kind == kind)
                texts.append(announcement.text);
        }
        return texts;
    }

private:
    QAccessible::UpdateHandler m_before = nullptr;
};

} // namespace

TEST_F(ErrorText, isReadOutWhenItAppearsAndWhenItChanges)
{
    ControlsWindow window("ErrorText { objectName: \"error\"; width: 200 }");
    auto *error = window.item(QStringLiteral("error"));
    EXPECT_TRUE(announcements.isEmpty());

    const auto first = QStringLiteral("No exit nodes are available.");
    error->setProperty("text", first);
    QCoreApplication::processEvents();
    EXPECT_EQ(readOut(QAccessible::Alert), QStringList{first});
    EXPECT_TRUE(readOut(QAccessible::ObjectShow).contains(first));

    announcements.clear();
    const auto second = QStringLiteral("The server could not be reached.");
    error->setProperty("text", second);
    QCoreApplication::processEvents();
    EXPECT_EQ(readOut(QAccessible::Alert), QStringList{second});
    EXPECT_EQ(readOut(QAccessible::ObjectShow), QStringList{second});
}

TEST_F(ErrorText, isNotReadOutWhenItGoes)
{
    ControlsWindow window("ErrorText { objectName: \"error\"; width: 200; text: \"Bad.\" }");
    QCoreApplication::processEvents();
    announcements.clear();
    window.item(QStringLiteral("error"))->setProperty("text", QString());
    QCoreApplication::processEvents();
    EXPECT_TRUE(announcements.isEmpty());
}

} // namespace tarnwik::test
