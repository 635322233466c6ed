#pragma once

#include "data/SqlStatement.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <stdexcept>

class frmActividadAlumno;

// A save that cannot start because of what the grid holds (an amount that
// is not a number, a column no chosen activity owns): the Spanish text says
// which cell and what to do. Nothing has been sent when it is thrown.
class SaveRefused : public std::runtime_error
{
public:
    explicit SaveRefused(const QString &message) : std::runtime_error(message.toStdString()), m_message(message) {}
    QString Message() const { return m_message; }

private:
    QString m_message;
};

// Stores the donor step's work in the school database so that a later run
// can load it again: the deduction per autonomous community, the chosen
// school years and activities with their settings, every donor row of the
// grid with its names, tax identifier, mark and amounts, and the saved
// payments that found no row when the grid was built. A save replaces the
// previous snapshot whole, inside one transaction: when any statement
// fails, the previous snapshot stays as it was.
class DonorWorkSaver
{
public:
    explicit DonorWorkSaver(frmActividadAlumno &form);

    // The statements of a save, in the order they are sent. Throws
    // SaveRefused when the grid holds something that cannot be stored.
    QList<SqlStatement> Statements() const;

    // Saves and tells the person how it went: "Datos guardados con éxito",
    // a refusal naming the cell, or the database's failure with what to do.
    // True when the work was saved.
    bool Save();

private:
    void AddCommunities(QList<SqlStatement> &sql) const;
    void AddActivities(QList<SqlStatement> &sql) const;
    void AddDonorRows(QList<SqlStatement> &sql) const;
    void AddKeptPayments(QList<SqlStatement> &sql) const;
    // The amount columns' school year and activity, found from their headers.
    QList<QPair<qint16, qint32>> AmountColumns() const;
    void Send(const QList<SqlStatement> &sql) const;

    frmActividadAlumno &m_form;
};
