#include "cli/Options.h"

#include "cli/Terminal.h"

#include <QCommandLineParser>

#include <array>

namespace tarnwik::cli {

namespace {

/// The groups that --help lists the commands in.
enum class CommandGroup {
    Ordinary,
    DemoOnly,
};

/// What a command takes behind its name.
enum class Operand {
    None,
    Plan,
};

struct CommandDescription
{
    Command command;
    /// One word, or several that follow each other.
    QString name;
    /// The options of this command alone.
    QStringList options;
    QString synopsis;
    QString summary;
    Operand operand = Operand::None;
    CommandGroup group = CommandGroup::Ordinary;
};

const QString emailOption = QStringLiteral("email");
const QString serverOption = QStringLiteral("server");
const QString nodeOption = QStringLiteral("node");
const QString waitOption = QStringLiteral("wait");
const QString jsonOption = QStringLiteral("json");
const QString demoOption = QStringLiteral("demo");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

const std::array<CommandDescription, 16> &commands()
{
    static const std::array<CommandDescription, 16> list{{
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
        {Command::Subscriptions,
         QStringLiteral("subscriptions"),
         {},
         QStringLiteral("subscriptions"),
         QStringLiteral("The App Store's plans with prices; which of them are active.")},
        {Command::Subscribe,
         QStringLiteral("subscribe"),
         {},
         QStringLiteral("subscribe monthly|yearly"),
         QStringLiteral("Buy a plan in the App Store, and pass the purchase on to the service."),
         Operand::Plan},
        {Command::RestorePurchases,
         QStringLiteral("restore-purchases"),
         {},
         QStringLiteral("restore-purchases"),
         QStringLiteral("Fetch what was bought before, and pass it on to the service.")},
        {Command::StorePurchase,
         QStringLiteral("store purchase"),
         {},
         QStringLiteral("store purchase monthly|yearly"),
         QStringLiteral("Buy a plan as on another device."),
         Operand::Plan,
         CommandGroup::DemoOnly},
        {Command::StoreRenew,
         QStringLiteral("store renew"),
         {},
         QStringLiteral("store renew monthly|yearly"),
         QStringLiteral("Begin the next period of an active plan."),
         Operand::Plan,
         CommandGroup::DemoOnly},
        {Command::StoreRevoke,
         QStringLiteral("store revoke"),
         {},
         QStringLiteral("store revoke monthly|yearly"),
         QStringLiteral("Take an active plan back."),
         Operand::Plan,
         CommandGroup::DemoOnly},
        {Command::StoreApprove,
         QStringLiteral("store approve"),
         {},
         QStringLiteral("store approve"),
         QStringLiteral("Approve the purchases that wait for approval."),
         Operand::None,
         CommandGroup::DemoOnly},
    }};
    return list;
}

QString commandList(CommandGroup group)
{
    QString text;
    for (const auto &command : commands()) {
        if (command.group == group)
            text += QStringLiteral("  %1\n      %2\n").arg(command.synopsis, command.summary);
    }
    return text;
}

QString helpText()
{
    return QStringLiteral("Usage: tarnwikctl [--json] [--demo] COMMAND [OPTIONS]\n"
                          "The Tarnwik VPN from the terminal.\n\nCommands:\n")
        + commandList(CommandGroup::Ordinary) + QStringLiteral("\nDemo only:\n") + commandList(CommandGroup::DemoOnly)
        + QStringLiteral("\nOptions:\n"
                         "  --json     Print JSON: one object or list; one object a line for watch.\n"
                         "  --demo     Use a service, keychain, VPN and App Store inside the program. The\n"
                         "             account is demo@tarnwik.example, its password demo.\n"
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

/// What follows the name of \a command in \a words; nothing when they do not begin with it.
std::optional<QStringList> operandsBehind(const CommandDescription &command, const QStringList &words)
{
    const QStringList name = command.name.split(u' ');
    return words.mid(0, name.size()) == name ? std::optional(words.mid(name.size())) : std::nullopt;
}

/// What is wrong with \a words, which begin with no command's name.
Answer noSuchCommand(const QStringList &words)
{
    QStringList beginnings;
    for (const auto &command : commands()) {
        if (command.name.startsWith(words.first() + u' '))
            beginnings << QStringLiteral("“%1”").arg(command.name.mid(words.first().size() + 1));
    }
    if (beginnings.isEmpty())
        return wrongUsage(QStringLiteral("There is no command “%1”.").arg(words.first()));
    return wrongUsage(
        QStringLiteral("“%1” takes one of %2.").arg(words.first(), beginnings.join(QStringLiteral(", "))));
}

std::variant<Options, Answer> optionsOf(const CommandDescription &description, const QStringList &operands,
                                        const QCommandLineParser &parser)
{
    std::optional<AppStoreSubscriptionPlan> plan;
    if (description.operand == Operand::Plan) {
        if (operands.size() == 1)
            plan = AppStoreSubscriptionPlan::fromRawValue(operands.first());
        if (!plan)
            return wrongUsage(QStringLiteral("“%1” takes a plan: monthly or yearly.").arg(description.name));
    } else if (!operands.isEmpty()) {
        // The word itself is not repeated: it may be a password that was given by mistake.
        return wrongUsage(QStringLiteral("“%1” takes no further words.").arg(description.name));
    }
    if (description.group == CommandGroup::DemoOnly && !parser.isSet(demoOption))
        return wrongUsage(QStringLiteral("“%1” needs --demo: it changes the demo’s App Store.").arg(description.name));

    for (const QString &option : {emailOption, serverOption, nodeOption, waitOption}) {
        if (parser.isSet(option) && !description.options.contains(option))
            return wrongUsage(QStringLiteral("“%1” takes no --%2.").arg(description.name, option));
    }
    Options options;
    options.command = description.command;
    options.plan = plan;
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
    for (const CommandDescription &command : commands()) {
        if (const auto operands = operandsBehind(command, words))
            return optionsOf(command, *operands, parser);
    }
    return noSuchCommand(words);
}

} // namespace tarnwik::cli
