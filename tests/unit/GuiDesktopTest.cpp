#include "platform/gui/GuiDesktop.h"

#include "support/EventLoop.h"

#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

namespace tarnwik {

namespace {

/// Stands in for the programs that open addresses: for every scheme that a test names.
class Handler : public QObject
{
    Q_OBJECT

public:
    ~Handler() override
    {
        for (const QString &scheme : std::as_const(m_schemes))
            QDesktopServices::unsetUrlHandler(scheme);
    }

    void handle(const QString &scheme)
    {
        m_schemes.append(scheme);
        QDesktopServices::setUrlHandler(scheme, this, "open");
    }

    Q_INVOKABLE void open(const QUrl &url) { opened.append(url); }

    QList<QUrl> opened;

private:
    QStringList m_schemes;
};

class GuiDesktopTest : public testing::Test
{
protected:
    GuiDesktopTest()
    {
        for (const char *scheme : {"http", "https", "mailto", "file", "javascript", "ftp", "tarnwik", "data"})
            m_handler.handle(QString::fromLatin1(scheme));
    }

    GuiDesktop m_desktop;
    Handler m_handler;
};

TEST_F(GuiDesktopTest, opensTheWebAndMail)
{
    for (const QString &url :
         {QStringLiteral("https://billing.tarnwik.example/portal?session=a%20b"),
          QStringLiteral("http://localhost:8080/"), QStringLiteral("mailto:support@tarnwik.example")}) {
        m_handler.opened.clear();
        EXPECT_TRUE(m_desktop.openURL(url)) << url.toStdString();
        EXPECT_EQ(m_handler.opened, QList<QUrl>{QUrl(url)}) << url.toStdString();
    }
}

TEST_F(GuiDesktopTest, theSchemesCaseDoesNotMatter)
{
    EXPECT_TRUE(m_desktop.openURL(QStringLiteral("HTTPS://tarnwik.example/")));
}

TEST_F(GuiDesktopTest, refusesAllElseAndLaunchesNothing)
{
    for (const char *url :
         {"", "/etc/passwd", "tarnwik.example", "//tarnwik.example", "file:///etc/passwd", "javascript:alert(1)",
          "ftp://tarnwik.example/", "tarnwik:go", "data:text/html,x", "https:", "https:///path", "http:tarnwik.example",
          "mailto:", "https://tarnwik.example/a b", "https://tarnwik.example/%zz", " https://tarnwik.example/",
          "https://[::1", "https://tarnwik.example:99999/"})
        EXPECT_FALSE(m_desktop.openURL(QString::fromLatin1(url))) << url;
    EXPECT_TRUE(m_handler.opened.isEmpty());
}

TEST_F(GuiDesktopTest, terminateEndsTheEventLoop)
{
    QTimer inVain;
    inVain.callOnTimeout([] { QCoreApplication::exit(1); });
    inVain.start(test::patience);
    m_desktop.terminate();
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST_F(GuiDesktopTest, activatingBringsAShownWindowToTheFront)
{
    QWindow hidden;
    QWindow shown;
    shown.show();
    test::settleEvents();
    m_desktop.activateIgnoringOtherApps();
    EXPECT_TRUE(test::spinUntil([&] { return shown.isActive(); }));
    EXPECT_FALSE(hidden.isVisible());
}

TEST_F(GuiDesktopTest, activatingWithoutAWindowDoesNothing)
{
    m_desktop.activateIgnoringOtherApps();
    EXPECT_EQ(QGuiApplication::focusWindow(), nullptr);
}

} // namespace
} // namespace tarnwik

#include "GuiDesktopTest.moc"
