#pragma once

#include <QList>
#include <QPair>
#include <QString>

// An ADO-style "key=value;key=value" connection string. Keys keep their
// order and spelling; look-ups ignore case, as ADO's do.
class ConnectionString
{
public:
    ConnectionString() = default;
    explicit ConnectionString(const QString &text);

    static ConnectionString Parse(const QString &text) { return ConnectionString(text); }

    bool Contains(const QString &key) const;
    QString Value(const QString &key) const;                 // "" when absent
    void SetValue(const QString &key, const QString &value); // replaces in place or appends
    QString ToString() const;                                // "k1=v1;k2=v2"
    QList<QPair<QString, QString>> Pairs() const { return m_pairs; }
    bool IsEmpty() const { return m_pairs.isEmpty(); }

private:
    QList<QPair<QString, QString>> m_pairs;
};
