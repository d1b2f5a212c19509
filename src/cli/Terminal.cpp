#include "cli/Terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <unistd.h>

namespace tarnwik::cli {

namespace {

void write(FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace

Terminal::Terminal()
    : m_hasPerson(isatty(STDERR_FILENO))
{
}

void Terminal::print(const QString &text) const
{
    write(stdout, text.toUtf8() + '\n');
}

void Terminal::print(const QJsonValue &value) const
{
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    write(stdout, document.toJson(QJsonDocument::Compact) + '\n');
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
