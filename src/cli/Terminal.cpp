#include "cli/Terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace tarnwik::cli {

namespace {

/// Whether \a stream took the whole of \a bytes.
bool write(FILE *stream, const QByteArray &bytes)
{
    return std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stream) == std::size_t(bytes.size())
        && std::fflush(stream) == 0;
}

void writeOutput(const QByteArray &bytes)
{
    if (!write(stdout, bytes))
        throw OutputError(QStringLiteral("The output cannot be written: %1.").arg(qt_error_string(errno)));
}

} // namespace

Terminal::Terminal()
    : m_hasPerson(isatty(STDERR_FILENO))
{
}

void Terminal::print(const QString &text) const
{
    writeOutput(text.toUtf8() + '\n');
}

void Terminal::print(const QJsonValue &value) const
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    writeOutput(document.toJson(QJsonDocument::Compact) + '\n');
}

void Terminal::printError(const QString &text) const
{
    write(stderr, plainText(text).toUtf8() + '\n');
}

void Terminal::progress(const QString &text) const
{
    if (m_hasPerson)
        printError(text);
}

QString plainText(const QString &text)
{
    const auto isUnsafe = [](QChar c) {
        return c.category() == QChar::Other_Control || (c >= QChar(0x202A) && c <= QChar(0x202E))
            || (c >= QChar(0x2066) && c <= QChar(0x2069)) || c == QChar(0x2028) || c == QChar(0x2029);
    };
    QString result = text;
    for (QChar &c : result) {
        if (isUnsafe(c))
            c = QChar::ReplacementCharacter;
    }
    return result;
}

} // namespace tarnwik::cli
