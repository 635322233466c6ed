#include "generator/DonorRecords.h"

#include <tuple>

namespace Aeat {

bool DonorRecords::IsOtherDonor(const Donation &row) const
{
    return !m_records.isEmpty() && m_records.first().nif != row.nif;
}

bool DonorRecords::Add(const Donation &row)
{
    for (Donation &record : m_records) {
        if (record.SameRecordAs(row)) {
            if (record.centimos > kMaxRecordCents - row.centimos)
                return false;
            record.centimos += row.centimos;
            m_total += row.centimos;
            return true;
        }
    }
    m_records.append(row);
    m_total += row.centimos;
    return true;
}

const QList<Donation> &DonorRecords::Records()
{
    auto key = [](const Donation &d) {
        return std::make_tuple(d.clave.unicode(), d.deduccion, d.enEspecie, d.comunidad, d.deduccionComunidad);
    };
    // A donor has a record or two: an insertion sort, stable, in place.
    for (qsizetype i = 1; i < m_records.size(); ++i) {
        for (qsizetype j = i; j > 0 && key(m_records.at(j)) < key(m_records.at(j - 1)); --j)
            m_records.swapItemsAt(j, j - 1);
    }
    return m_records;
}

void DonorRecords::Clear()
{
    m_records.clear();
    m_total = 0;
}

} // namespace Aeat
