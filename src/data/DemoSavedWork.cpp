#include "data/DemoSavedWork.h"

#include "util/ConversionError.h"
#include "util/NifCif.h"
#include "util/TextRoutines.h"

#include <QHash>
#include <QSet>

namespace {

bool Valid(QString id)
{
    try {
        return ValidarNIFCIF(id);
    } catch (const ConversionError &) {
        return false;
    }
}

bool AllDigits(const QString &text)
{
    for (const QChar c : text)
        if (!c.isDigit())
            return false;
    return !text.isEmpty();
}

QString Part(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("-") : text;
}

} // namespace

QString DemoGridIdentifier(const QString &dni)
{
    if (dni.trimmed().isEmpty())
        return dni;
    QString id = dni;
    id.remove(QLatin1Char(' ')).remove(QLatin1Char('-'));
    id = FixedWidth(id, 9, QStringLiteral("0"));
    if (!Valid(id) && AllDigits(id) && id.startsWith(QLatin1Char('0')))
        id = id.right(8) + LetraNIF(id.right(8).toInt());
    if (id == QStringLiteral("00000000T"))
        id = QStringLiteral("00000002") + LetraNIF(2);
    return id;
}

SavedWorkDescription DemoSavedWork(const InstallationDescription &school)
{
    SavedWorkDescription saved;
    QSet<QPair<int, int>> donors;
    for (int i = 0; i < school.years.size(); ++i) {
        const YearDescription &year = school.years.at(i);
        const QString fileName = year.fileName.isEmpty()
                                     ? QStringLiteral("curso") + QString::number(year.id) + QStringLiteral(".db")
                                     : year.fileName;
        const QString conBD = year.connectionString.value_or(QStringLiteral("Provider=SQLite;Data Source=datos/")
                                                             + fileName);
        // The first year's spring, the second year's autumn: one calendar year.
        const QString meses = i == 0 ? QStringLiteral("111111000000") : QStringLiteral("000000001111");
        for (const ActivityDescription &activity : year.activities)
            saved.activities.append({year.id, year.name, conBD, activity.id, activity.name, 80.0, QStringLiteral("A"),
                                     QStringLiteral("Donativo - 80%"), meses, false});

        QHash<int, const MemberDescription *> members;
        for (const MemberDescription &member : year.members)
            members.insert(member.id, &member);
        for (const EnrolmentDescription &enrolment : year.enrolments) {
            if (donors.contains({enrolment.student, enrolment.payer}))
                continue;
            donors.insert({enrolment.student, enrolment.payer});
            SavedDonor donor;
            donor.idAL = enrolment.student;
            donor.idMF = enrolment.payer;
            const MemberDescription *member = members.value(enrolment.payer);
            if (member) {
                donor.nombre = Part(member->name);
                donor.ap1 = Part(member->surname1);
                donor.ap2 = Part(member->surname2);
                donor.nif = DemoGridIdentifier(member->dni);
            } else {
                donor.nombre = donor.ap1 = donor.ap2 = QStringLiteral("-");
                donor.nif = QString();
            }
            donor.mostrar = Valid(donor.nif);
            saved.donors.append(donor);
        }
    }
    return saved;
}
