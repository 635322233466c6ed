#pragma once

#include "wizard/Registros.h"

#include <QDate>
#include <QHash>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <memory>
#include <stdexcept>

class Connection;
class FlexGrid;
class ProgressBar;
struct Declarante;

// A cell of the donor grid that cannot be read as an amount: the
// declaration stops and names it.
class UnreadableAmountError : public std::runtime_error
{
public:
    explicit UnreadableAmountError(const QString &message) : std::runtime_error(message.toStdString()), m_message(message) {}
    QString Message() const { return m_message; }

private:
    QString m_message;
};

// Writes the declaration tables of Modelo182.mdb from the donor grid: the
// declarant, one Donantes row per declared donor and positive amount cell,
// and one CartaDonantes row per donor with a positive total. The caller
// runs it inside one transaction.
class DonorDeclarationWriter
{
public:
    struct Context
    {
        const FlexGrid &grid;
        const ColAlumnos &alumnos;
        const ColCursosEscolares &cursos;
        const ColComAut &comunidades;
        bool porComunidad; // chkComunidad of the deduction step
        const Declarante &declarante;
        QString delegacion;
        QString domicilio;
        QDate hoy; // the declaration is for the year before
        QLocale locale;
        ProgressBar &progreso;
    };

    DonorDeclarationWriter(Connection &conexion, Context context);

    void Write();

    int DonantesEscritos() const { return m_donantes; }
    int CartasEscritas() const { return m_cartas; }

private:
    struct Donor
    {
        QString nombreGrid;
        std::shared_ptr<cAlumno> pagador; // null: no payer record matches the name
        double total = 0;
    };

    void WriteDeclarant();
    qlonglong ReadDeclarantKey();
    void WriteDonantes(int row, Donor &donor, qlonglong codDeclarante);
    void WriteCarta(const Donor &donor, int row);
    std::shared_ptr<cAlumno> FindPayer(const QString &gridName) const;
    void IndexPayers();
    QString Deduction(const QString &header) const;
    double CellAmount(int row, int col) const;

    Connection &m_conexion;
    Context m_ctx;
    // The payer records by every name they answer to, without blanks: the
    // first record in the collection's order wins, as a scan would find it.
    QHash<QString, std::shared_ptr<cAlumno>> m_payerByName;
    // The deduction of each amount column, by column.
    QStringList m_deductions;
    int m_donantes = 0;
    int m_cartas = 0;
};

// A percentage as the declaration holds it: times 100, five digits with
// leading zeros (25 -> "02500", 12.5 -> "01250").
QString EncodePercentage(double percentage);

// The names a payer record answers to, without blanks: its surnames and
// name, an empty part written once as "-" and once as nothing.
QStringList PayerNames(const cAlumno &payer);

// Whether the payer record's name is the grid's donor name: both compared
// without blanks, a part shown as "-" matching an empty part.
bool PayerNameMatches(const cAlumno &payer, const QString &gridName);
