#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>

// A statement sent many times with other values: a look-up per grid row, an
// insert per amount. It is written piece by piece, the values apart from the
// SQL around them, so that
// - its text (ToString) is exactly the one written with the values as
//   literals: what the connection's observer sees and error messages show;
// - the connection can prepare its shape (Shape: "?" where each value goes)
//   once and only bind the values each time, instead of having SQLite parse
//   every text anew.
//
//   SqlStatement("SELECT Pago FROM DatosModelo182 WHERE IDCC=").Integer(1).Sql(" AND IDAct=").Integer(7)
//   ToString(): SELECT Pago FROM DatosModelo182 WHERE IDCC=1 AND IDAct=7
//   Shape():    SELECT Pago FROM DatosModelo182 WHERE IDCC=? AND IDAct=?
class SqlStatement
{
public:
    explicit SqlStatement(const QString &sql = QString());

    // SQL as written (keywords, names, punctuation, fixed literals).
    SqlStatement &Sql(const QString &sql);
    // A text value: written 'quoted', with its quotes doubled.
    SqlStatement &Text(const QString &value);
    // A whole number, written in decimal.
    SqlStatement &Integer(qlonglong value);
    // A number already written as an SQL numeric literal ("12", "12.50",
    // "-3"): it is written as it is and bound as SQLite would read it.
    SqlStatement &Decimal(const QString &literal);

    QString ToString() const;
    const QString &Shape() const { return m_shape; }
    const QVariantList &Values() const { return m_values; }

private:
    enum class Kind : char { Text, Integer, Decimal };
    void Add(QVariant value, Kind kind);

    QString m_shape;
    QVariantList m_values;
    // Where each value's "?" stands in the shape and how it is written: the
    // text as sent is only put together when someone reads it.
    QList<qsizetype> m_marks;
    QList<Kind> m_kinds;
    QStringList m_decimals; // the decimal literals as written, in order
};
