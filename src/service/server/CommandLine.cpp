#include "service/server/CommandLine.h"

#include <QCommandLineParser>
#include <QHostAddress>

namespace tarnwik::service {

namespace {

constexpr char usage[] = R"(Usage: tarnwik-service [OPTION]...
Serves the customer REST API on this computer, for development and tests.

  --port N            listen on port N; 0, the default, takes any free one
  --address ADDRESS   listen on this loopback address (default: 127.0.0.1)
  --database FILE     keep the data in FILE (default: :memory:)
  --seed FILE         what an empty database starts with (default: built in)
  --store-root FILE   accept App Store transactions signed under this root
                      certificate (PEM), which is read at each of them
                      (default: accept none)
  --certificate FILE  serve https with this certificate (PEM)
  --key FILE          the certificate's private key (PEM)
  --verbose           write method, path and status of each request to stderr
  --help              show this text
  --version           show the version

"Listening on URL" on the standard output tells that the service is ready.
SIGTERM and SIGINT stop it.
)";

QCommandLineOption option(const char *name, const char *value = "")
{
    return {QLatin1String(name), {}, QLatin1String(value)};
}

int portOf(const QString &text)
{
    constexpr uint highest = 65535;
    bool isNumber = false;
    const uint port = text.toUInt(&isNumber);
    if (!isNumber || port > highest)
        throw CommandLineError(QStringLiteral("--port must be a number from 0 to 65535, not \"%1\".").arg(text));
    return int(port);
}

QString addressOf(const QString &text)
{
    const QHostAddress address(text);
    if (!address.isLoopback()) {
        throw CommandLineError(
            QStringLiteral("--address must be a loopback address such as 127.0.0.1 or ::1, not \"%1\".").arg(text));
    }
    return address.toString();
}

} // namespace

CommandLine parseCommandLine(const QStringList &arguments)
{
    const QCommandLineOption port = option("port", "N");
    const QCommandLineOption address = option("address", "ADDRESS");
    const QCommandLineOption database = option("database", "FILE");
    const QCommandLineOption seed = option("seed", "FILE");
    const QCommandLineOption storeRoot = option("store-root", "FILE");
    const QCommandLineOption certificate = option("certificate", "FILE");
    const QCommandLineOption key = option("key", "FILE");
    const QCommandLineOption verbose = option("verbose");
    const QCommandLineOption help = option("help");
    const QCommandLineOption version = option("version");

    QCommandLineParser parser;
    parser.addOptions({port, address, database, seed, storeRoot, certificate, key, verbose, help, version});
    if (!parser.parse(arguments))
        throw CommandLineError(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        throw CommandLineError(QStringLiteral("Unexpected argument \"%1\".").arg(parser.positionalArguments().first()));
    if (parser.isSet(certificate) != parser.isSet(key))
        throw CommandLineError(QStringLiteral("--certificate and --key belong together."));

    CommandLine line;
    if (parser.isSet(help))
        line.information = QString::fromLatin1(usage);
    else if (parser.isSet(version))
        line.information = QStringLiteral("tarnwik-service " TARNWIK_VERSION "\n");
    if (parser.isSet(port))
        line.server.port = portOf(parser.value(port));
    if (parser.isSet(address))
        line.server.address = addressOf(parser.value(address));
    if (parser.isSet(certificate))
        line.server.identity = {parser.value(certificate), parser.value(key)};
    line.server.isVerbose = parser.isSet(verbose);
    if (parser.isSet(database))
        line.databasePath = parser.value(database);
    if (parser.isSet(seed))
        line.seedPath = parser.value(seed);
    if (parser.isSet(storeRoot))
        line.storeRootPath = parser.value(storeRoot);
    return line;
}

} // namespace tarnwik::service
