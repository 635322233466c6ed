#include "data/SqlStatement.h"

#include "util/VbFormat.h"

SqlStatement::SqlStatement(const QString &sql) : m_shape(sql)
{
}

SqlStatement &SqlStatement::Sql(const QString &sql)
{
    m_shape += sql;
    return *this;
}

void SqlStatement::Add(QVariant value, Kind kind)
{
    m_marks.append(m_shape.size());
    m_shape += QLatin1Char('?');
    m_values.append(std::move(value));
    m_kinds.append(kind);
}

SqlStatement &SqlStatement::Text(const QString &value)
{
    // A null text would be bound as NULL, where '' is an empty text.
    Add(value.isNull() ? QStringLiteral("") : value, Kind::Text);
    return *this;
}

SqlStatement &SqlStatement::Integer(qlonglong value)
{
    Add(value, Kind::Integer);
    return *this;
}

SqlStatement &SqlStatement::Decimal(const QString &literal)
{
    // SQLite reads a literal with a point or an exponent as a real number.
    const bool real = literal.contains(QLatin1Char('.')) || literal.contains(QLatin1Char('e'), Qt::CaseInsensitive);
    Add(real ? QVariant(literal.toDouble()) : QVariant(literal.toLongLong()), Kind::Decimal);
    m_decimals.append(literal);
    return *this;
}

QString SqlStatement::ToString() const
{
    QString text;
    qsizetype from = 0, decimal = 0;
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        text += QStringView(m_shape).mid(from, m_marks.at(i) - from);
        switch (m_kinds.at(i)) {
        case Kind::Text:
            text += SqlText(m_values.at(i).toString());
            break;
        case Kind::Integer:
            text += QString::number(m_values.at(i).toLongLong());
            break;
        case Kind::Decimal:
            text += m_decimals.at(decimal++);
            break;
        }
        from = m_marks.at(i) + 1;
    }
    text += QStringView(m_shape).mid(from);
    return text;
}
