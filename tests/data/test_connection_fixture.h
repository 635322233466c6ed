#pragma once

// Shared set-up of the data-access tests: a temporary folder per test, SQLite
// files made in it, and the process-wide settings of Connection put back
// after each test.

#include "data/Connection.h"
#include "data/DatabaseError.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

namespace connection_test {

// Texts are compared as UTF-8 so that a failure prints them readably.
inline std::string U8(const QString &text)
{
    return text.toStdString();
}

class DataFolderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_savedBusyTimeout = Connection::BusyTimeout();
    }

    void TearDown() override
    {
        Connection::SetBaseFolder(QString());
        Connection::SetGlobalObserver(nullptr);
        Connection::SetBusyTimeout(m_savedBusyTimeout);
    }

    QString Path(const QString &name) const { return m_dir.filePath(name); }

    // An SQLite file holding what the statements make.
    QString MakeDatabase(const QString &name, const QStringList &statements)
    {
        const QString path = Path(name);
        auto connection = Connection::CreateSQLite(path);
        // PRAGMAs do not run inside a transaction; the rest goes in one,
        // which spares a disk sync per statement.
        bool inTransaction = false;
        for (const QString &sql : statements) {
            const bool pragma = sql.startsWith(QLatin1String("PRAGMA"), Qt::CaseInsensitive);
            if (!pragma && !inTransaction) {
                connection->BeginTrans();
                inTransaction = true;
            }
            connection->Execute(sql);
        }
        if (inTransaction)
            connection->CommitTrans();
        connection->Close();
        return path;
    }

    static QString SQLiteString(const QString &path)
    {
        return QStringLiteral("Provider=SQLite;Data Source=") + path;
    }

    // The single value of a one-row, one-column query.
    static QVariant Scalar(Connection &connection, const QString &sql)
    {
        Recordset rs = connection.Execute(sql);
        EXPECT_FALSE(rs.Eof()) << sql.toStdString();
        return rs.Eof() ? QVariant() : rs.Fields(0);
    }

    // The first column of every row, as text.
    static QStringList Column(Connection &connection, const QString &sql)
    {
        QStringList values;
        Recordset rs = connection.Execute(sql);
        while (!rs.Eof()) {
            values << rs.Fields(0).toString();
            rs.MoveNext();
        }
        return values;
    }

    QTemporaryDir m_dir;
    int m_savedBusyTimeout = 0;
};

// Runs the code and gives back the DatabaseError it throws (fails the test
// when nothing is thrown).
template <typename F>
DatabaseError ExpectDatabaseError(F &&code)
{
    try {
        code();
    } catch (const DatabaseError &error) {
        return error;
    }
    ADD_FAILURE() << "no DatabaseError was thrown";
    return DatabaseError(QString());
}

} // namespace connection_test
