#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

// The rows a statement returned, read whole into memory (a client-side
// cursor, as the add-in always asks for). Field look-up by name ignores case.
class Recordset
{
public:
    Recordset() = default;
    Recordset(QStringList fieldNames, QList<QVariantList> rows);

    // "EOF" is a C macro, hence the spelling.
    bool Eof() const { return m_position >= m_rows.size(); }
    bool BOF() const { return m_position < 0; }
    void MoveNext();
    void MoveFirst() { m_position = 0; }
    // The field of the current row; throws DatabaseError for an unknown
    // name or when there is no current row. A database NULL is a null QVariant.
    QVariant Fields(const QString &name) const;
    QVariant Fields(int index) const;
    // The position of a field, for readers that visit many rows; throws
    // DatabaseError, as Fields does, for an unknown name.
    int FieldIndex(const QString &name) const;
    int FieldCount() const { return m_fieldNames.size(); }
    QStringList FieldNames() const { return m_fieldNames; }
    int RecordCount() const { return m_rows.size(); }
    const QList<QVariantList> &Rows() const { return m_rows; }

    bool IsOpen() const { return m_open; }
    void Close();

private:
    int IndexOf(const QString &name) const;

    QStringList m_fieldNames;
    QList<QVariantList> m_rows;
    int m_position = 0;
    bool m_open = true;
};
