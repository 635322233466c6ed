#include "data/Demo.h"
#include "data/DemoSavedWork.h"

#include "util/NifCif.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <cmath>
#include <map>
#include <random>

namespace {

// A fixed-seed generator. Only the engine's output sequence is standardised,
// so the mapping to ranges is done here rather than by the library's
// distributions (which differ between implementations).
class Random
{
public:
    explicit Random(quint32 seed) : m_engine(seed) {}
    int Below(int n) { return int(m_engine() % quint32(n)); }
    bool Percent(int p) { return Below(100) < p; }
    bool PerMille(int p) { return Below(1000) < p; }
    QString Pick(const QStringList &list) { return list.at(Below(int(list.size()))); }

private:
    std::mt19937 m_engine;
};

const QStringList kMaleNames = {
    QStringLiteral("Alejandro"),
    QStringLiteral("Daniel"),
    QStringLiteral("Pablo"),
    QStringLiteral("Hugo"),
    QStringLiteral("Álvaro"),
    QStringLiteral("Adrián"),
    QStringLiteral("David"),
    QStringLiteral("Javier"),
    QStringLiteral("Sergio"),
    QStringLiteral("Mario"),
    QStringLiteral("Diego"),
    QStringLiteral("Iván"),
    QStringLiteral("Rubén"),
    QStringLiteral("Óscar"),
    QStringLiteral("Íñigo"),
    QStringLiteral("Martín"),
    QStringLiteral("Lucas"),
    QStringLiteral("Mateo"),
    QStringLiteral("Nicolás"),
    QStringLiteral("Jesús"),
    QStringLiteral("José Antonio"),
    QStringLiteral("Juan Carlos"),
    QStringLiteral("Francisco Javier"),
    QStringLiteral("Ángel"),
    QStringLiteral("Raúl"),
    QStringLiteral("Joaquín"),
    QStringLiteral("Tomás"),
    QStringLiteral("Andrés"),
    QStringLiteral("Rodrigo"),
    QStringLiteral("Gonzalo"),
    QStringLiteral("Fermín"),
    QStringLiteral("Ramón"),
};

const QStringList kFemaleNames = {
    QStringLiteral("Lucía"),   QStringLiteral("María"),    QStringLiteral("Paula"),     QStringLiteral("Sofía"),
    QStringLiteral("Martina"), QStringLiteral("Carmen"),   QStringLiteral("Laura"),     QStringLiteral("Ana Belén"),
    QStringLiteral("Elena"),   QStringLiteral("Noelia"),   QStringLiteral("Inés"),      QStringLiteral("Rocío"),
    QStringLiteral("Begoña"),  QStringLiteral("Mª José"),  QStringLiteral("Mª Carmen"), QStringLiteral("Nuria"),
    QStringLiteral("Marta"),   QStringLiteral("Cristina"), QStringLiteral("Irene"),     QStringLiteral("Alba"),
    QStringLiteral("Julia"),   QStringLiteral("Claudia"),  QStringLiteral("Sara"),      QStringLiteral("Verónica"),
    QStringLiteral("Raquel"),  QStringLiteral("Mónica"),   QStringLiteral("Susana"),    QStringLiteral("Pilar"),
    QStringLiteral("Ainhoa"),  QStringLiteral("Leire"),    QStringLiteral("Zoe"),       QStringLiteral("Valeria"),
};

const QStringList kSurnames = {
    QStringLiteral("García"),   QStringLiteral("Martínez"),   QStringLiteral("López"),       QStringLiteral("Sánchez"),
    QStringLiteral("Pérez"),    QStringLiteral("Gómez"),      QStringLiteral("Fernández"),   QStringLiteral("Núñez"),
    QStringLiteral("Muñoz"),    QStringLiteral("Ibáñez"),     QStringLiteral("Peña"),        QStringLiteral("Castaño"),
    QStringLiteral("Ordóñez"),  QStringLiteral("Álvarez"),    QStringLiteral("Jiménez"),     QStringLiteral("Rodríguez"),
    QStringLiteral("González"), QStringLiteral("Díaz"),       QStringLiteral("Hernández"),   QStringLiteral("Ruiz"),
    QStringLiteral("Moreno"),   QStringLiteral("Romero"),     QStringLiteral("Alonso"),      QStringLiteral("Gutiérrez"),
    QStringLiteral("Navarro"),  QStringLiteral("Torres"),     QStringLiteral("Domínguez"),   QStringLiteral("Vázquez"),
    QStringLiteral("Ramos"),    QStringLiteral("Gil"),        QStringLiteral("Ramírez"),     QStringLiteral("Serrano"),
    QStringLiteral("Blanco"),   QStringLiteral("Molina"),     QStringLiteral("Morales"),     QStringLiteral("Suárez"),
    QStringLiteral("Ortega"),   QStringLiteral("Delgado"),    QStringLiteral("Castro"),      QStringLiteral("Ortiz"),
    QStringLiteral("Rubio"),    QStringLiteral("Marín"),      QStringLiteral("Sanz"),        QStringLiteral("Iglesias"),
    QStringLiteral("Medina"),   QStringLiteral("Garrido"),    QStringLiteral("Cortés"),      QStringLiteral("Castillo"),
    QStringLiteral("Santos"),   QStringLiteral("Lozano"),     QStringLiteral("Cano"),        QStringLiteral("Prieto"),
    QStringLiteral("Méndez"),   QStringLiteral("Calvo"),      QStringLiteral("Gallego"),     QStringLiteral("Vidal"),
    QStringLiteral("León"),     QStringLiteral("Herrera"),    QStringLiteral("Márquez"),     QStringLiteral("Cabrera"),
    QStringLiteral("Cañete"),   QStringLiteral("Bermúdez"),   QStringLiteral("Montaño"),     QStringLiteral("Carreño"),
    QStringLiteral("Aguirre"),  QStringLiteral("Echevarría"), QStringLiteral("Zubizarreta"), QStringLiteral("de la Fuente"),
};

const QStringList kForeignMaleNames = {
    QStringLiteral("Mohamed"), QStringLiteral("Andrei"), QStringLiteral("Wei"),
    QStringLiteral("Kevin"),   QStringLiteral("Rahul"),  QStringLiteral("Sean"),
};
const QStringList kForeignFemaleNames = {
    QStringLiteral("Fatima"), QStringLiteral("Ioana"), QStringLiteral("Li"),
    QStringLiteral("Oksana"), QStringLiteral("Priya"), QStringLiteral("Siobhan"),
};
const QStringList kForeignSurnames = {
    QStringLiteral("El Amrani"), QStringLiteral("Popescu"), QStringLiteral("Chen"),      QStringLiteral("D'Souza"),
    QStringLiteral("O'Neill"),   QStringLiteral("Ionescu"), QStringLiteral("Kowalenko"), QStringLiteral("Benali"),
};

// Streets of the capital, and names found in any Spanish town.
const QStringList kMadridStreets = {
    QStringLiteral("Calle de Alcalá"),        QStringLiteral("Avenida de América"),
    QStringLiteral("Paseo de la Castellana"), QStringLiteral("Calle de Bravo Murillo"),
    QStringLiteral("Calle de Goya"),          QStringLiteral("Calle del Príncipe de Vergara"),
    QStringLiteral("Calle de Arturo Soria"),  QStringLiteral("Calle de López de Hoyos"),
    QStringLiteral("Avenida de la Albufera"), QStringLiteral("Calle de Sor Ángela de la Cruz"),
    QStringLiteral("Calle de O'Donnell"),
};
const QStringList kStreets = {
    QStringLiteral("Calle Mayor"),     QStringLiteral("Avenida de la Constitución"), QStringLiteral("Calle Real"),
    QStringLiteral("Plaza de España"), QStringLiteral("Calle de la Peña"),           QStringLiteral("Calle de los Olmos"),
    QStringLiteral("Camino Viejo"),    QStringLiteral("Calle de San Martín"),        QStringLiteral("Avenida de Andalucía"),
    QStringLiteral("Calle del Ángel"),
};

struct Town
{
    const char *province;
    const char *town;
    const char *postalCode; // "280" is completed with two digits
    int weight;
};

// Most families live in Madrid and its neighbouring provinces; a few come
// from far away (and from communities without a regional deduction).
const Town kTowns[] = {
    {"Madrid", "Madrid", "280", 520},
    {"Madrid", "Alcobendas", "28100", 40},
    {"Madrid", "Getafe", "28901", 40},
    {"Madrid", "Leganés", "28911", 40},
    {"Madrid", "Móstoles", "28931", 30},
    {"Madrid", "Alcalá de Henares", "28801", 30},
    {"Madrid", "Las Rozas de Madrid", "28230", 30},
    {"Madrid", "Pozuelo de Alarcón", "28223", 25},
    {"Madrid", "San Sebastián de los Reyes", "28700", 25},
    {"Madrid", "Rivas-Vaciamadrid", "28521", 20},
    {"Toledo", "Toledo", "45001", 25},
    {"Toledo", "Illescas", "45200", 20},
    {"Toledo", "Seseña", "45223", 15},
    {"Guadalajara", "Guadalajara", "19001", 25},
    {"Guadalajara", "Azuqueca de Henares", "19200", 15},
    {"Segovia", "Segovia", "40001", 12},
    {"Ávila", "Ávila", "05001", 12},
    {"Cuenca", "Cuenca", "16001", 10},
    {"Barcelona", "Barcelona", "08001", 12},
    {"Valencia", "Valencia", "46001", 10},
    {"Bizkaia", "Bilbao", "48001", 10},
    {"Navarra", "Pamplona", "31001", 8},
    {"A Coruña", "A Coruña", "15001", 8},
    {"Illes Balears", "Palma", "07001", 8},
    {"Araba/Álava", "Vitoria-Gasteiz", "01001", 5},
    {"Ceuta", "Ceuta", "51001", 5},
};

QChar NifLetter(qint64 number)
{
    return LetraNIF(qint32(number)).at(0);
}

QString Digits(qint64 number, int width)
{
    return QStringLiteral("%1").arg(number, width, 10, QLatin1Char('0'));
}

// A family member's DNI as the school's staff typed it.
QString MemberDni(Random &random, bool foreign)
{
    const int roll = random.Below(1000);
    if (roll < 20)
        return QStringLiteral(""); // typed as nothing
    if (roll < 25)
        return QString(); // never typed (NULL)
    if (foreign && roll < 900) {
        const int prefix = random.Below(3);
        const qint64 number = random.Below(10000000);
        return QString(QLatin1Char("XYZ"[prefix])) + Digits(number, 7) + NifLetter(prefix * 10000000LL + number);
    }
    if (roll < 45) { // a wrong control letter
        const qint64 number = 10000000 + random.Below(70000000);
        return Digits(number, 8) + NifLetter(number + 1 + random.Below(22));
    }
    if (roll < 75) { // with a hyphen
        const qint64 number = 10000000 + random.Below(70000000);
        return Digits(number, 8) + QLatin1Char('-') + NifLetter(number);
    }
    if (roll < 90) { // an old DNI without its leading zero
        const qint64 number = 1000000 + random.Below(9000000);
        return QString::number(number) + NifLetter(number);
    }
    const qint64 number = 10000000 + random.Below(70000000);
    return Digits(number, 8) + NifLetter(number);
}

AddressDescription RandomAddress(Random &random, const Town *near = nullptr)
{
    const Town *town = near;
    if (!town) {
        int total = 0;
        for (const Town &t : kTowns)
            total += t.weight;
        int roll = random.Below(total);
        for (const Town &t : kTowns) {
            if (roll < t.weight) {
                town = &t;
                break;
            }
            roll -= t.weight;
        }
    }
    AddressDescription address;
    const bool capital = QByteArray(town->town) == "Madrid";
    const QString street = random.Pick(capital ? kMadridStreets : kStreets);
    const QString number = QString::number(1 + random.Below(180));
    const QString floor = QString::number(1 + random.Below(9));
    const QString door = QString(QChar(QLatin1Char('A' + random.Below(4))));
    address.street = QStringLiteral("%1, %2, %3º %4").arg(street, number, floor, door);
    address.town = QString::fromUtf8(town->town);
    address.postalCode = QString::fromLatin1(town->postalCode);
    if (address.postalCode.size() == 3)
        address.postalCode += Digits(1 + random.Below(55), 2);
    address.province = QString::fromUtf8(town->province);
    return address;
}

const Town *TownOf(const AddressDescription &address)
{
    for (const Town &t : kTowns)
        if (address.town == QString::fromUtf8(t.town))
            return &t;
    return &kTowns[0];
}

double Money(double value)
{
    return std::round(value * 100.0) / 100.0;
}

struct Kid
{
    StudentDescription student;
    int order = 0; // 0 for the eldest
    bool onlySecondYear = false;
    bool onlyFirstYear = false;
};

struct Family
{
    int id = 0;
    QList<MemberDescription> members;
    QList<Kid> kids;
    int mainPayer = 0;      // index into members
    bool separated = false; // parents at two addresses; some fees are split
};

Family MakeFamily(Random &random, int id, int &nextMember, int &nextStudent)
{
    Family family;
    family.id = id;
    const bool foreign = random.Percent(5);
    auto surname = [&] { return foreign ? random.Pick(kForeignSurnames) : random.Pick(kSurnames); };
    auto secondSurname = [&] { return foreign && random.Percent(60) ? QStringLiteral("") : random.Pick(kSurnames); };
    auto male = [&] { return foreign ? random.Pick(kForeignMaleNames) : random.Pick(kMaleNames); };
    auto female = [&] { return foreign ? random.Pick(kForeignFemaleNames) : random.Pick(kFemaleNames); };

    MemberDescription father{0, surname(), secondSurname(), male(), id, QString(), std::nullopt};
    MemberDescription mother{0, surname(), secondSurname(), female(), id, QString(), std::nullopt};
    const AddressDescription home = RandomAddress(random);

    const int shape = random.Below(100);
    QList<MemberDescription> members;
    if (shape < 10) {
        members << (random.Percent(70) ? mother : father);
    } else {
        members << father << mother;
        family.separated = random.Percent(8);
        if (shape >= 88) { // a grandparent who pays now and then
            MemberDescription grandmother{0,
                                          mother.surname2.isEmpty() ? surname() : mother.surname2,
                                          random.Pick(kSurnames),
                                          random.Pick(kFemaleNames),
                                          id,
                                          QString(),
                                          std::nullopt};
            members << grandmother;
        }
    }
    for (int i = 0; i < members.size(); ++i) {
        MemberDescription &m = members[i];
        m.id = nextMember++;
        m.dni = MemberDni(random, foreign);
        if (random.Percent(3))
            continue; // no address on file
        m.address = (i == 1 && family.separated) ? RandomAddress(random, TownOf(home)) : home;
        if (i == 2)
            m.address = RandomAddress(random, TownOf(home));
    }
    family.members = members;
    family.mainPayer = members.size() > 1 && random.Percent(35) ? 1 : 0;

    const int kidsRoll = random.Below(100);
    const int kidCount = kidsRoll < 65 ? 1 : kidsRoll < 92 ? 2 : 3;
    for (int k = 0; k < kidCount; ++k) {
        Kid kid;
        kid.order = k;
        kid.student.id = nextStudent++;
        kid.student.surname1 = father.surname1;
        kid.student.surname2 = mother.surname1;
        kid.student.name = random.Percent(50) ? male() : female();
        kid.student.family = id;
        const int stay = random.Below(100);
        kid.onlyFirstYear = stay < 5;
        kid.onlySecondYear = stay >= 5 && stay < 10;
        family.kids << kid;
    }
    return family;
}

struct ActivityPlan
{
    int id;
    const char *name;
    double price;
    int percent;       // share of the students enrolled
    bool schoolMonths; // September to June; otherwise October to May
};

const ActivityPlan kActivities[] = {
    {1, "Comedor", 125.00, 65, true},
    {2, "Transporte escolar", 68.50, 20, true},
    {3, "Aula matinal", 42.00, 18, true},
    {4, "Inglés", 35.00, 15, true},
    {5, "Robótica", 39.90, 12, false},
    {6, "Fútbol", 24.00, 12, false},
    {7, "Música y movimiento", 28.50, 10, false},
    {8, "Ajedrez", 18.00, 8, false},
    {9, "Teatro", 22.00, 10, false}, // from the second year on
};

MonthFlags EnrolmentMonths(Random &random, bool schoolMonths)
{
    const int roll = random.Below(100);
    if (roll < 4)
        return Months({10, 11, 12, 1, 2, 3, 4, 5, 6}); // joined in October
    if (roll < 7)
        return Months({9, 10, 11, 12}); // left at Christmas
    if (roll < 9)
        return Months({1, 2, 3, 4, 5, 6}); // from January
    return schoolMonths ? SchoolMonths() : Months({10, 11, 12, 1, 2, 3, 4, 5});
}

// Which activities a year offers and how many students take them.
struct YearPlan
{
    int activities = 9; // the first ones of kActivities
    bool theatreFromSecond = true;
    int participation = 100; // percent of each activity's usual share
    bool lastYears = false;  // a generated school: every student every year
};

YearDescription MakeYear(Random &random, int id, const QString &name, double priceFactor, const QList<Family> &families,
                         const YearPlan &yearPlan = {})
{
    YearDescription year;
    year.id = id;
    year.name = name;
    year.fileName = QStringLiteral("curso%1.db").arg(name);
    for (const ActivityPlan &plan : kActivities) {
        if ((plan.id == 9 && id == 1 && yearPlan.theatreFromSecond) || plan.id > yearPlan.activities)
            continue;
        year.activities.append({plan.id, QString::fromUtf8(plan.name), Money(plan.price * priceFactor)});
    }
    for (const Family &family : families) {
        year.members += family.members;
        for (const Kid &kid : family.kids) {
            if (!yearPlan.lastYears && ((id == 1 && kid.onlySecondYear) || (id == 2 && kid.onlyFirstYear)))
                continue;
            year.students << kid.student;
            for (const ActivityDescription &activity : year.activities) {
                const ActivityPlan &plan = kActivities[activity.id - 1];
                if (!random.Percent(qMin(95, plan.percent * yearPlan.participation / 100)))
                    continue;
                double price = *activity.price;
                if (plan.id == 1 && kid.order > 0)
                    price = Money(price * 0.9); // sibling discount
                if (plan.id == 1 && random.Percent(2))
                    price = 0; // dining grant
                const MonthFlags months = EnrolmentMonths(random, plan.schoolMonths);
                const QList<MemberDescription> &m = family.members;
                if (family.separated && plan.id <= 2 && random.Percent(60)) {
                    // Each parent pays half.
                    year.enrolments.append({kid.student.id, activity.id, m.at(0).id, Money(price / 2), months});
                    year.enrolments.append({kid.student.id, activity.id, m.at(1).id, Money(price / 2), months});
                    continue;
                }
                int payer = m.at(family.mainPayer).id;
                // A generated school keeps each child's payer of an activity
                // from year to year, as families do.
                const int roll = yearPlan.lastYears ? int((kid.student.id * 37u + (activity.id > 3 ? 53u : 0u)) % 100u)
                                                    : random.Below(100);
                if (roll < 2)
                    payer = 0; // nobody on file pays it
                else if (roll < 14 && m.size() > 1)
                    payer = m.at(1 - family.mainPayer).id; // the other parent
                else if (roll < 18 && m.size() > 2)
                    payer = m.at(2).id; // the grandparent
                year.enrolments.append({kid.student.id, activity.id, payer, price, months});
            }
        }
    }
    return year;
}

} // namespace

InstallationDescription DemoSchool()
{
    Random random(182);

    InstallationDescription description;
    SchoolDescription &school = description.school;
    school.id = 1;
    school.name = QStringLiteral("Colegio Santa Teresa de las Acacias");
    school.director = QStringLiteral("Teresa Gutiérrez Alcañiz");
    school.cif = CifWithControl(QLatin1Char('R'), QStringLiteral("2800347"));
    school.phone = QStringLiteral("913456780");
    school.taxRegime = 1;
    school.street = QStringLiteral("Calle de las Acacias, 12");
    school.town = QStringLiteral("Madrid");
    school.postalCode = QStringLiteral("28045");
    school.province = QStringLiteral("Madrid");
    school.email = QStringLiteral("secretaria@colegiolasacacias.es");

    QList<Family> families;
    int nextMember = 1001;
    int nextStudent = 1;
    for (int id = 1; id <= 300; ++id)
        families << MakeFamily(random, id, nextMember, nextStudent);

    description.years << MakeYear(random, 1, QStringLiteral("2024-2025"), 1.0, families);
    description.years << MakeYear(random, 2, QStringLiteral("2025-2026"), 1.03, families);

    description.session.currentYear = 2;
    description.session.numeroJustificante = QStringLiteral("1820000000001");
    description.session.delegacion = QStringLiteral("Madrid");
    description.session.domicilio = QStringLiteral("Calle de las Acacias, 12, 28045 Madrid");
    description.savedWork = DemoSavedWork(description);
    return description;
}

namespace {

// The saved work of a school whose donor grid was built from all its years,
// activities and months: every cell's amount, every donor declared but
// those with an identifier that does not validate.
SavedWorkDescription SnapshotOf(const InstallationDescription &school)
{
    SavedWorkDescription saved;
    QSet<QPair<int, int>> donors;
    for (const YearDescription &year : school.years) {
        QHash<int, QString> activityNames;
        for (const ActivityDescription &activity : year.activities) {
            activityNames.insert(activity.id, activity.name);
            const QString conBD = year.connectionString.value_or(QStringLiteral("Provider=SQLite;Data Source=datos/")
                                                                 + year.fileName);
            saved.activities.append({year.id, year.name, conBD, activity.id, activity.name, 80, QStringLiteral("D1"),
                                     QStringLiteral("Donativo - 80%"), QStringLiteral("111111111111")});
        }
        QHash<int, const MemberDescription *> members;
        for (const MemberDescription &member : year.members)
            members.insert(member.id, &member);
        std::map<std::tuple<int, int, int>, double> cells;
        QList<std::tuple<int, int, int>> order;
        for (const EnrolmentDescription &e : year.enrolments) {
            int months = 0;
            for (const std::optional<int> &flag : e.months)
                months += flag.value_or(0) != 0;
            const auto key = std::make_tuple(e.student, e.payer, e.activity);
            if (!cells.count(key))
                order << key;
            cells[key] += e.price.value_or(0) * months;
        }
        for (const auto &key : order) {
            const auto [student, payer, activity] = key;
            saved.payments.append({student, payer, year.id, activity, std::round(cells[key] * 100) / 100});
            if (donors.contains({student, payer}))
                continue;
            donors.insert({student, payer});
            const MemberDescription *m = members.value(payer);
            QString nif = m ? m->dni : QString();
            nif.remove(QLatin1Char('-'));
            QString check = nif;
            bool valid = false;
            try {
                valid = !check.isEmpty() && ValidarNIFCIF(check);
            } catch (...) {
            }
            saved.donors.append({student, payer, m ? m->name : QString(), m ? m->surname1 : QString(),
                                 m ? m->surname2 : QString(), nif, valid});
        }
    }
    return saved;
}

} // namespace

InstallationDescription GeneratedSchool(const SchoolSize &size)
{
    Random random(size.seed);
    InstallationDescription description = DemoSchool();
    description.years.clear();
    QList<Family> families;
    int nextMember = 100001;
    int nextStudent = 1;
    for (int id = 1; nextStudent <= size.students; ++id)
        families << MakeFamily(random, id, nextMember, nextStudent);
    // Trim the last family to the exact number of students.
    while (!families.isEmpty() && nextStudent - 1 > size.students) {
        Family &last = families.last();
        last.kids.removeLast();
        --nextStudent;
        if (last.kids.isEmpty())
            families.removeLast();
    }
    YearPlan plan;
    plan.activities = qBound(1, size.activities, 9);
    plan.theatreFromSecond = false;
    plan.participation = 320;
    plan.lastYears = true;
    const int firstYear = 2026 - size.years;
    for (int y = 1; y <= size.years; ++y) {
        const QString name = QString::number(firstYear + y - 1) + QLatin1Char('-') + QString::number(firstYear + y);
        description.years << MakeYear(random, y, name, 1.0 + 0.03 * (y - 1), families, plan);
    }
    description.session.currentYear = size.years;
    if (size.savedWork)
        description.savedWork = SnapshotOf(description);
    return description;
}

InstallationPaths CreateDemoInstallation(const QString &dir)
{
    return BuildInstallation(dir, DemoSchool());
}
