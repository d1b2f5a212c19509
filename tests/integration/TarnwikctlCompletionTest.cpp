#include "TarnwikctlFixture.h"

#include <QRegularExpression>

namespace tarnwik {

namespace {

using test::words;

/// The completion script in a real shell, against what the program says of itself.
class TarnwikctlCompletion : public test::TarnwikctlFixture
{
protected:
    /// What bash offers behind \a line, whose last word is the one to complete.
    QStringList completions(const QStringList &line)
    {
        const QString script =
            QStringLiteral("source '" TARNWIKCTL_COMPLETION "'; COMP_WORDS=(\"$@\"); "
                           "COMP_CWORD=$(($# - 1)); _tarnwikctl; printf '%s\\n' \"${COMPREPLY[@]}\"");
        test::Program shell(QStringLiteral("bash"),
                            QStringList{QStringLiteral("-c"), script, QStringLiteral("bash")} + line,
                            {m_home.environment, {}, nullptr, {}});
        const auto result = shell.result();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        return sorted(QString::fromUtf8(result.output).split(u'\n', Qt::SkipEmptyParts));
    }

    static QStringList sorted(QStringList list)
    {
        list.sort();
        list.removeDuplicates();
        return list;
    }

    static QStringList matches(const QString &string, const char *pattern)
    {
        QStringList found;
        const QRegularExpression expression(QString::fromLatin1(pattern), QRegularExpression::MultilineOption);
        for (auto match = expression.globalMatch(string); match.hasNext();)
            found << match.next().captured(1);
        return sorted(found);
    }

    QString help() { return QString::fromUtf8(run("--help").output); }
    /// The options that stand in the list of those that every command takes.
    QStringList commonOptions() { return matches(help(), "^  (--\\w+)"); }
};

TEST_F(TarnwikctlCompletion, offersTheCommandsAndOptionsOfTheHelp)
{
    const QStringList commands = matches(help(), "^  ([a-z][a-z-]*)(?= |$)");
    EXPECT_EQ(commands.size(), 13);
    EXPECT_EQ(completions(words("tarnwikctl") << QString()), sorted(commands + commonOptions()));
    EXPECT_EQ(completions(words("tarnwikctl --demo s")),
              words("sign-in sign-out status store subscribe subscriptions"));
}

TEST_F(TarnwikctlCompletion, offersEachCommandItsOwnWordsAndOptions)
{
    const QStringList synopses = matches(help(), "^  ([a-z][a-z-]*(?: .*)?)$");
    EXPECT_EQ(synopses.size(), 16);
    for (const QString &synopsis : synopses) {
        // A synopsis is the command's words, then words to choose from, then options.
        const QStringList command = matches(synopsis, "^([a-z][a-z-]*(?: [a-z]+(?= |$))?)").first().split(u' ');
        const QStringList choices = matches(synopsis, "(?<=[ |])([a-z]+)(?=\\||$)");
        const QStringList operands = synopsis.contains(u'|') && !synopsis.contains(u'[') ? choices : QStringList();
        EXPECT_EQ(completions(words("tarnwikctl") + command + QStringList{QString()}),
                  sorted(operands + matches(synopsis, "(--\\w+)") + commonOptions()))
            << synopsis.toStdString();
    }
}

TEST_F(TarnwikctlCompletion, offersTheSecondWordsOfACommand)
{
    const QStringList changes = matches(help(), "^  store ([a-z]+)");
    EXPECT_EQ(changes.size(), 4);
    EXPECT_EQ(completions(words("tarnwikctl store") << QString()), sorted(changes + commonOptions()));
    EXPECT_EQ(completions(words("tarnwikctl --demo store re")), words("renew revoke"));
    EXPECT_EQ(completions(words("tarnwikctl store purchase m")), words("monthly"));
    EXPECT_EQ(completions(words("tarnwikctl store approve m")), QStringList());
    EXPECT_EQ(completions(words("tarnwikctl --json subscribe --demo y")), words("yearly"));
    EXPECT_EQ(completions(words("tarnwikctl subscribe monthly") << QString()), commonOptions());
}

TEST_F(TarnwikctlCompletion, leavesValuesToTheUser)
{
    EXPECT_EQ(completions(words("tarnwikctl connect --node s")), QStringList());
    EXPECT_EQ(completions(words("tarnwikctl sign-in --email --")), QStringList());
}

} // namespace

} // namespace tarnwik
