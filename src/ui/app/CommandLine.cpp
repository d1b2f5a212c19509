#include "ui/app/CommandLine.h"

#include <QCommandLineParser>

namespace tarnwik::app {

namespace {

const QString demoOption = QStringLiteral("demo");
const QString helpOption = QStringLiteral("help");
const QString versionOption = QStringLiteral("version");

constexpr int wrongUsageStatus = 2;

QString helpText()
{
    return QStringLiteral("Usage: tarnwik [--demo]\n"
                          "The Tarnwik VPN on the desktop.\n"
                          "\nOptions:\n"
                          "  --demo     Use a service, keychain, VPN and App Store inside the program. The\n"
                          "             account is demo@tarnwik.example, its password demo.\n"
                          "  --help     Print this text.\n"
                          "  --version  Print the version.\n"
                          "\nEnvironment:\n"
                          "  TARNWIK_GPU=1  Draw with the graphics card instead of the processor.\n"
                          "\nA second start brings the window of the first one to the front.");
}

Answer wrongUsage(const QString &sentence)
{
    return {wrongUsageStatus, sentence + QStringLiteral("\nTry “tarnwik --help”.")};
}

} // namespace

std::variant<Options, Answer> parseCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const QString &flag : {demoOption, versionOption})
        parser.addOption(QCommandLineOption(flag));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("h"), helpOption}));
    const bool isUnderstood = parser.parse(arguments);
    if (parser.isSet(helpOption))
        return Answer{0, helpText()};
    if (parser.isSet(versionOption))
        return Answer{0, QStringLiteral("tarnwik " TARNWIK_VERSION)};
    if (!isUnderstood)
        return wrongUsage(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return wrongUsage(QStringLiteral("Tarnwik takes no words, only options."));
    return Options{parser.isSet(demoOption)};
}

} // namespace tarnwik::app
