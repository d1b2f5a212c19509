#include "cli/Options.h"

#include "cli/Terminal.h"

#include <QCommandLineParser>

#include <algorithm>
#include <array>

namespace tarnwik::cli {

namespace {

struct CommandDescription
{
    Command command;
    QString name;
    /// The options of this command alone.
    QStringList options;
    QString synopsis;
    QString summary;
};

const QString emailOption = QStringLiteral("email");
const QString serverOption = QStringLiteral("server");
const QString nodeOption = QStringLiteral("node");
const QString waitOption = QStringLiteral("wait");
const QString jsonOption = QStringLiteral("json");
const QString demoOption = QStringLiteral("demo");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

const std::array<CommandDescription, 9> &commands()
{
    static const std::array<CommandDescription, 9> list{{
        {Command::SignIn,
         QStringLiteral("sign-in"),
         {emailOption, serverOption},
         QStringLiteral("sign-in --email E [--server URL]"),
         QStringLiteral("Sign in. Asks for the password, or reads it as one line of standard input.")},
        {Command::Status,
         QStringLiteral("status"),
         {},
         QStringLiteral("status"),
         QStringLiteral("Session, tunnel, usage and selected exit node.")},
        {Command::Account,
         QStringLiteral("account"),
         {},
         QStringLiteral("account"),
         QStringLiteral("The account with plan, quota and usage.")},
        {Command::Nodes,
         QStringLiteral("nodes"),
         {},
         QStringLiteral("nodes"),
         QStringLiteral("The exit nodes; the selected one is marked.")},
        {Command::Devices,
         QStringLiteral("devices"),
         {},
         QStringLiteral("devices"),
         QStringLiteral("The account's devices.")},
        {Command::Connect,
         QStringLiteral("connect"),
         {nodeOption, waitOption},
         QStringLiteral("connect [--node ID|NAME] [--wait SECONDS]"),
         QStringLiteral("Connect, and wait until the tunnel is up or has failed (30 s).")},
        {Command::Disconnect,
         QStringLiteral("disconnect"),
         {},
         QStringLiteral("disconnect"),
         QStringLiteral("Disconnect, and wait until the tunnel is down.")},
        {Command::Watch,
         QStringLiteral("watch"),
         {},
         QStringLiteral("watch"),
         QStringLiteral("Print every change of status and usage until interrupted.")},
        {Command::SignOut,
         QStringLiteral("sign-out"),
         {},
         QStringLiteral("sign-out"),
         QStringLiteral("End the session and the tunnel.")},
    }};
    return list;
}

QString helpText()
{
    QString text = QStringLiteral("Usage: tarnwikctl [--json] [--demo] COMMAND [OPTIONS]\n"
                                  "The Tarnwik VPN from the terminal.\n\nCommands:\n");
    for (const auto &command : commands())
        text += QStringLiteral("  %1\n      %2\n").arg(command.synopsis, command.summary);
    return text
        + QStringLiteral("\nOptions:\n"
                         "  --json     Print JSON: one object or list; one object a line for watch.\n"
                         "  --demo     Use a service, keychain and VPN inside the program. The account is\n"
                         "             demo@tarnwik.example, its password demo.\n"
                         "  --help     Print this text.\n"
                         "  --version  Print the version.\n"
                         "\nExit status: 0 done, 1 failed, 2 wrong usage, 3 not signed in.");
}

Answer wrongUsage(const QString &sentence)
{
    return {ExitStatus::WrongUsage, plainText(sentence) + QStringLiteral("\nTry “tarnwikctl --help”.")};
}

/// What is wrong with the options that \a parser did not understand.
QString parserError(const QCommandLineParser &parser)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (unknown.isEmpty())
        return parser.errorText();
    // Single letters are what a word behind one dash falls into, and that may be a password that was given by mistake.
    return unknown.first().size() > 1 ? QStringLiteral("There is no option “--%1”.").arg(unknown.first())
                                      : QStringLiteral("There is no such option.");
}

/// \a text as a whole number of seconds, from one to a day.
std::optional<std::chrono::seconds> parseSeconds(const QString &text)
{
    bool isNumber = false;
    const int seconds = text.toInt(&isNumber);
    return isNumber && seconds >= 1 && seconds <= 86400 ? std::optional(std::chrono::seconds(seconds)) : std::nullopt;
}

std::variant<Options, Answer> optionsOf(const CommandDescription &description, const QCommandLineParser &parser)
{
    for (const QString &option : {emailOption, serverOption, nodeOption, waitOption}) {
        if (parser.isSet(option) && !description.options.contains(option))
            return wrongUsage(QStringLiteral("“%1” takes no --%2.").arg(description.name, option));
    }
    Options options;
    options.command = description.command;
    options.isJSON = parser.isSet(jsonOption);
    options.isDemo = parser.isSet(demoOption);
    options.email = parser.value(emailOption);
    if (parser.isSet(serverOption))
        options.serverURL = parser.value(serverOption);
    if (parser.isSet(nodeOption))
        options.node = parser.value(nodeOption);
    if (options.command == Command::SignIn && options.email.isEmpty())
        return wrongUsage(QStringLiteral("“sign-in” needs --email."));
    if (parser.isSet(waitOption)) {
        const auto seconds = parseSeconds(parser.value(waitOption));
        if (!seconds)
            return wrongUsage(QStringLiteral("--wait takes a whole number of seconds, from 1 to 86400."));
        options.wait = *seconds;
    }
    return options;
}

} // namespace

std::variant<Options, Answer> parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const QString &withValue : {emailOption, serverOption, nodeOption, waitOption})
        parser.addOption(QCommandLineOption(withValue, QString(), withValue));
    for (const QString &flag : {jsonOption, demoOption, versionOption})
        parser.addOption(QCommandLineOption(flag));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), helpOption}));
    if (!parser.parse(arguments))
        return wrongUsage(parserError(parser));
    if (parser.isSet(helpOption))
        return Answer{ExitStatus::Done, helpText()};
    if (parser.isSet(versionOption))
        return Answer{ExitStatus::Done, QStringLiteral("tarnwikctl " TARNWIK_VERSION)};

    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return wrongUsage(QStringLiteral("Which command?"));
    const auto found = std::find_if(commands().begin(), commands().end(),
                                    [&](const CommandDescription &command) { return command.name == words.first(); });
    if (found == commands().end())
        return wrongUsage(QStringLiteral("There is no command “%1”.").arg(words.first()));
    // The word itself is not repeated: it may be a password that was given by mistake.
    if (words.size() > 1)
        return wrongUsage(QStringLiteral("“%1” takes no further words.").arg(found->name));
    return optionsOf(*found, parser);
}

} // namespace tarnwik::cli
