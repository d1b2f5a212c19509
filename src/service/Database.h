#pragma once

#include "platform/LocalizedError.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <type_traits>

struct sqlite3;
struct sqlite3_stmt;

namespace tarnwik::service {

/// What SQLite refused. The text is for the operator's log, never for a client: it may quote SQL, though no values.
class DatabaseError final : public LocalizedError
{
public:
    DatabaseError(int code, const QString &description)
        : LocalizedError(description)
        , m_code(code)
    {
    }

    /// SQLite's primary result code.
    int code() const noexcept { return m_code; }

private:
    int m_code;
};

/// One prepared statement: values are bound to "?" in their order, then rows are stepped through.
class Statement
{
public:
    Statement(sqlite3 *database, const char *sql);

    Statement &bind(qint64 value);
    Statement &bind(const QString &value);
    Statement &bind(const QByteArray &blob);
    template<typename T>
    Statement &bind(const std::optional<T> &value)
    {
        return value ? bind(*value) : bindNull();
    }

    /// Goes to the next row; false when there is none.
    bool step();

    qint64 integer(int column) const;
    bool boolean(int column) const { return integer(column) != 0; }
    QString text(int column) const;
    std::optional<qint64> optionalInteger(int column) const;
    std::optional<QString> optionalText(int column) const;

private:
    struct Finalizer
    {
        void operator()(sqlite3_stmt *statement) const;
    };

    Statement &bindNull();
    Statement &checked(int code);
    bool isNull(int column) const;

    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
    int m_boundCount = 0;
};

/// One connection to an SQLite database. Not for several threads at once; several processes may have one file open.
/// Every operation throws DatabaseError.
class Database
{
public:
    /// Opens \a path, or a private database in memory for ":memory:". A file that is not there is made, readable by its
    /// owner alone.
    explicit Database(const QString &path);

    /// Prepares \a sql and binds \a values to it.
    template<typename... Values>
    Statement prepare(const char *sql, const Values &...values)
    {
        Statement statement(m_handle.get(), sql);
        (bindValue(statement, values), ...);
        return statement;
    }

    /// Runs \a sql, which gives no rows.
    template<typename... Values>
    void run(const char *sql, const Values &...values)
    {
        prepare(sql, values...).step();
    }

    /// Runs several statements without values.
    void runScript(const char *sql);

    qint64 lastInsertId() const;

    /// Runs \a work in a transaction that writes, and keeps what it did unless it throws.
    template<typename Work>
    auto transaction(Work work)
    {
        Transaction transaction(*this);
        if constexpr (std::is_void_v<decltype(work())>) {
            work();
            transaction.commit();
        } else {
            auto result = work();
            transaction.commit();
            return result;
        }
    }

private:
    /// Rolled back at its end unless committed. It takes the write lock at once, so that it never fails halfway because
    /// another process wrote in between.
    class Transaction
    {
    public:
        explicit Transaction(Database &database);
        ~Transaction();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;
        void commit();

    private:
        Database &m_database;
        bool m_isOpen = true;
    };

    struct Closer
    {
        void operator()(sqlite3 *database) const;
    };

    template<typename Value>
    static void bindValue(Statement &statement, const Value &value)
    {
        if constexpr (std::is_integral_v<Value>)
            statement.bind(qint64(value));
        else
            statement.bind(value);
    }

    std::unique_ptr<sqlite3, Closer> m_handle;
};

} // namespace tarnwik::service
