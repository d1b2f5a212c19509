#include "service/Database.h"

#include <QFile>

#include <sqlite3.h>

#include <fcntl.h>
#include <unistd.h>

namespace tarnwik::service {

namespace {

[[noreturn]] void fail(sqlite3 *database)
{
    throw DatabaseError(sqlite3_errcode(database) & 0xff, QString::fromUtf8(sqlite3_errmsg(database)));
}

void check(sqlite3 *database, int code)
{
    if (code != SQLITE_OK)
        fail(database);
}

/// Makes the file before SQLite does, since SQLite would let others read it. The files that SQLite puts beside it take
/// over its mode.
void makePrivateFile(const QString &path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file >= 0)
        ::close(file);
}

} // namespace

Statement::Statement(sqlite3 *database, const char *sql)
{
    sqlite3_stmt *statement = nullptr;
    check(database, sqlite3_prepare_v2(database, sql, -1, &statement, nullptr));
    m_statement.reset(statement);
}

void Statement::Finalizer::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

Statement &Statement::checked(int code)
{
    check(sqlite3_db_handle(m_statement.get()), code);
    return *this;
}

Statement &Statement::bind(qint64 value)
{
    return checked(sqlite3_bind_int64(m_statement.get(), ++m_boundCount, value));
}

Statement &Statement::bind(const QString &value)
{
    const QByteArray text = value.toUtf8();
    return checked(
        sqlite3_bind_text(m_statement.get(), ++m_boundCount, text.constData(), int(text.size()), SQLITE_TRANSIENT));
}

Statement &Statement::bind(const QByteArray &blob)
{
    return checked(
        sqlite3_bind_blob(m_statement.get(), ++m_boundCount, blob.constData(), int(blob.size()), SQLITE_TRANSIENT));
}

Statement &Statement::bindNull()
{
    return checked(sqlite3_bind_null(m_statement.get(), ++m_boundCount));
}

bool Statement::step()
{
    const int code = sqlite3_step(m_statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        fail(sqlite3_db_handle(m_statement.get()));
    return code == SQLITE_ROW;
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

qint64 Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

QString Statement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement.get(), column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_statement.get(), column));
}

std::optional<qint64> Statement::optionalInteger(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(integer(column));
}

std::optional<QString> Statement::optionalText(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(text(column));
}

Database::Database(const QString &path)
{
    const bool isFile = path != QLatin1String(":memory:");
    if (isFile)
        makePrivateFile(path);

    sqlite3 *handle = nullptr;
    // A path such as "file:…" is a file of that name: URI names are off unless they are asked for.
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &handle,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_handle.reset(handle);
    if (code != SQLITE_OK)
        throw DatabaseError(code, QString::fromUtf8(handle ? sqlite3_errmsg(handle) : sqlite3_errstr(code)));

    // How long one process waits for another's transaction, in milliseconds. Generous: they last but a moment, except
    // the first, which hashes the passwords of the seed.
    constexpr int patience = 10'000;
    check(handle, sqlite3_busy_timeout(handle, patience));
    runScript("PRAGMA foreign_keys = ON");
}

void Database::Closer::operator()(sqlite3 *database) const
{
    sqlite3_close_v2(database);
}

void Database::runScript(const char *sql)
{
    check(m_handle.get(), sqlite3_exec(m_handle.get(), sql, nullptr, nullptr, nullptr));
}

qint64 Database::lastInsertId() const
{
    return sqlite3_last_insert_rowid(m_handle.get());
}

Database::Transaction::Transaction(Database &database)
    : m_database(database)
{
    m_database.runScript("BEGIN IMMEDIATE");
}

Database::Transaction::~Transaction()
{
    // Not through runScript(), which throws: a failure here means that SQLite has rolled back by itself.
    if (m_isOpen)
        sqlite3_exec(m_database.m_handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Database::Transaction::commit()
{
    m_database.runScript("COMMIT");
    m_isOpen = false;
}

} // namespace tarnwik::service
