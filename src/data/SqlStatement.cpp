#include "data/SqlStatement.h"

#include "util/VbFormat.h"

SqlStatement::SqlStatement(const QString &sql) : m_shape(sql), m_pieces{sql}
{
}

SqlStatement &SqlStatement::Sql(const QString &sql)
{
    m_shape += sql;
    m_pieces.last() += sql;
    return *this;
}

void SqlStatement::Add(const QVariant &value, const QString &written)
{
    m_shape += QLatin1Char('?');
    m_values.append(value);
    m_written.append(written);
    m_pieces.append(QString());
}

SqlStatement &SqlStatement::Text(const QString &value)
{
    // A null text would be bound as NULL, where '' is an empty text.
    Add(value.isNull() ? QStringLiteral("") : value, QString());
    return *this;
}

SqlStatement &SqlStatement::Integer(qlonglong value)
{
    Add(value, QString::number(value));
    return *this;
}

SqlStatement &SqlStatement::Decimal(const QString &literal)
{
    // SQLite reads a literal with a point or an exponent as a real number.
    const bool real = literal.contains(QLatin1Char('.')) || literal.contains(QLatin1Char('e'), Qt::CaseInsensitive);
    Add(real ? QVariant(literal.toDouble()) : QVariant(literal.toLongLong()), literal);
    return *this;
}

QString SqlStatement::ToString() const
{
    QString text = m_pieces.first();
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        text += m_written.at(i).isEmpty() ? SqlText(m_values.at(i).toString()) : m_written.at(i);
        text += m_pieces.at(i + 1);
    }
    return text;
}
