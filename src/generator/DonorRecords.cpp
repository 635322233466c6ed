#include "generator/DonorRecords.h"

#include <algorithm>
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

QList<Donation> DonorRecords::Records() const
{
    QList<Donation> sorted = m_records;
    auto key = [](const Donation &d) {
        return std::make_tuple(d.clave.unicode(), d.deduccion, d.enEspecie, d.comunidad, d.deduccionComunidad);
    };
    std::stable_sort(sorted.begin(), sorted.end(), [&](const Donation &a, const Donation &b) { return key(a) < key(b); });
    return sorted;
}

void DonorRecords::Clear()
{
    m_records.clear();
    m_total = 0;
}

} // namespace Aeat
