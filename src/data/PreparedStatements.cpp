#include "data/PreparedStatements.h"

#include <sqlite3.h>

PreparedStatements::~PreparedStatements()
{
    FinalizeAll();
}

void PreparedStatements::FinalizeAll()
{
    for (auto &[shape, prepared] : m_statements)
        sqlite3_finalize(prepared.statement);
    m_statements.clear();
}

void PreparedStatements::Fail(sqlite3_stmt *statement)
{
    const QSqlError error(QString(), QString::fromUtf8(sqlite3_errmsg(m_db)), QSqlError::StatementError,
                          QString::number(sqlite3_extended_errcode(m_db)));
    if (statement)
        sqlite3_reset(statement);
    throw Failure{error};
}

PreparedStatements::Prepared &PreparedStatements::Find(const QString &shape, const QString &sql)
{
    const auto found = m_statements.find(shape);
    if (found != m_statements.end())
        return found->second;
    // A few shapes repeat thousands of times; one-off ones would pile up.
    if (m_statements.size() >= kLimit)
        FinalizeAll();
    Prepared prepared;
    const QByteArray text = sql.toUtf8();
    if (sqlite3_prepare_v2(m_db, text.constData(), int(text.size()), &prepared.statement, nullptr) != SQLITE_OK) {
        sqlite3_finalize(prepared.statement);
        Fail();
    }
    // Named as Qt's driver names them, double quotes dropped.
    const int columns = sqlite3_column_count(prepared.statement);
    for (int c = 0; c < columns; ++c)
        prepared.names << QString::fromUtf8(sqlite3_column_name(prepared.statement, c)).remove(QLatin1Char('"'));
    return m_statements.emplace(shape, prepared).first->second;
}

void PreparedStatements::Bind(sqlite3_stmt *statement, const QVariantList &values)
{
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QVariant &value = values.at(i);
        const int position = int(i) + 1;
        int result = SQLITE_OK;
        if (value.isNull()) {
            result = sqlite3_bind_null(statement, position);
        } else if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int) {
            result = sqlite3_bind_int64(statement, position, value.toLongLong());
        } else if (value.typeId() == QMetaType::Double) {
            result = sqlite3_bind_double(statement, position, value.toDouble());
        } else {
            // The files hold UTF-8: converted here once, not by SQLite at
            // every comparison or store.
            const QByteArray text = value.toString().toUtf8();
            result = sqlite3_bind_text(statement, position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        }
        if (result != SQLITE_OK)
            Fail(statement);
    }
}

PreparedStatements::Outcome PreparedStatements::Run(const QString &shape, const QString &sql, const QVariantList &values)
{
    Prepared &prepared = Find(shape, sql);
    sqlite3_stmt *statement = prepared.statement;
    Bind(statement, values);
    const qint64 totalBefore = sqlite3_total_changes64(m_db);
    const int columns = int(prepared.names.size());
    QList<QVariantList> rows;
    int step;
    while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
        QVariantList row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c) {
            switch (sqlite3_column_type(statement, c)) {
            case SQLITE_INTEGER:
                row.append(QVariant(qlonglong(sqlite3_column_int64(statement, c))));
                break;
            case SQLITE_FLOAT:
                row.append(QVariant(sqlite3_column_double(statement, c)));
                break;
            case SQLITE_TEXT: {
                const auto *text = static_cast<const QChar *>(sqlite3_column_text16(statement, c));
                row.append(QVariant(QString(text, sqlite3_column_bytes16(statement, c) / int(sizeof(QChar)))));
                break;
            }
            case SQLITE_BLOB: {
                const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, c));
                row.append(QVariant(QByteArray(bytes, sqlite3_column_bytes(statement, c))));
                break;
            }
            default:
                row.append(QVariant());
            }
        }
        rows.append(std::move(row));
    }
    if (step != SQLITE_DONE)
        Fail(statement);
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);

    Outcome outcome;
    if (columns > 0)
        outcome.rows = Recordset(prepared.names, rows);
    else
        outcome.affected = sqlite3_total_changes64(m_db) == totalBefore ? 0 : sqlite3_changes(m_db);
    return outcome;
}
