#include "data/Recordset.h"

#include "data/DatabaseError.h"

Recordset::Recordset(QStringList fieldNames, QList<QVariantList> rows)
    : m_fieldNames(std::move(fieldNames)), m_rows(std::move(rows))
{
}

void Recordset::MoveNext()
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La operación no está permitida si el objeto está cerrado."));
    // As ADO: moving past the end is an error, so a reading loop that forgets
    // its EOF test fails loudly instead of repeating the last row.
    if (Eof())
        throw DatabaseError(QStringLiteral("No hay registro actual: se ha llegado al final del conjunto de registros."));
    ++m_position;
}

int Recordset::IndexOf(const QString &name) const
{
    // Nearly every reader spells the name as the statement does: an exact
    // comparison is much cheaper than one that folds case.
    for (int i = 0; i < m_fieldNames.size(); ++i) {
        if (m_fieldNames.at(i) == name)
            return i;
    }
    for (int i = 0; i < m_fieldNames.size(); ++i) {
        if (m_fieldNames.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

int Recordset::FieldIndex(const QString &name) const
{
    const int index = IndexOf(name);
    if (index < 0) {
        throw DatabaseError(QStringLiteral("El campo «%1» no está en el conjunto de registros (campos: %2).")
                                .arg(name, m_fieldNames.join(QStringLiteral(", "))));
    }
    return index;
}

QVariant Recordset::Fields(const QString &name) const
{
    return Fields(FieldIndex(name));
}

QVariant Recordset::Fields(int index) const
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("La operación no está permitida si el objeto está cerrado."));
    if (index < 0 || index >= m_fieldNames.size()) {
        throw DatabaseError(QStringLiteral("No existe el campo número %1 (el conjunto de registros tiene %2).")
                                .arg(index)
                                .arg(m_fieldNames.size()));
    }
    if (m_position < 0 || m_position >= m_rows.size())
        throw DatabaseError(
            QStringLiteral("No hay registro actual: el conjunto de registros está al principio o al final."));
    const QVariantList &row = m_rows.at(m_position);
    return index < row.size() ? row.at(index) : QVariant();
}

void Recordset::Close()
{
    // Closing twice is harmless: the steps close "if it is still open".
    m_open = false;
}
