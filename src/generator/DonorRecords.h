#pragma once

#include "generator/Donation.h"

#include <QList>

// The declaration generator's own pieces.
namespace Aeat {

// The records of one donor: rows with the same key, percentages and in-kind
// mark are summed into one record. The rows of the declaration arrive
// sorted by donor, so only one donor's records are ever held.
class DonorRecords
{
public:
    bool IsEmpty() const { return m_records.isEmpty(); }
    // True when `row` belongs to a donor other than the one collected.
    bool IsOtherDonor(const Donation &row) const;
    // Adds the row to its record. Returns false (nothing added) when the
    // record's sum would not fit the amount field.
    bool Add(const Donation &row);
    // The records in a fixed order (key, percentage, in kind, community).
    const QList<Donation> &Records();
    qint64 TotalCents() const { return m_total; }
    QString Nif() const { return m_records.isEmpty() ? QString() : m_records.first().nif; }
    QString Name() const { return m_records.isEmpty() ? QString() : m_records.first().nombre.trimmed(); }
    void Clear();

private:
    QList<Donation> m_records;
    qint64 m_total = 0;
};

} // namespace Aeat
