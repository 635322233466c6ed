#pragma once

#include "controls/Form.h"

class WizardRun;
class frmConfiguracion;

// What the three new-entry dialogs of the catalogue window share: check
// what was typed, refuse a duplicate, insert the row, read its new key back
// (the largest of the table: one user works on the file at a time), hand
// the entry to the catalogue window, close.
class NewEntryDialog : public Form
{
public:
    void Form_Load() override;

protected:
    NewEntryDialog(WizardRun &run, frmConfiguracion &configuracion, const QString &name, const QString &caption);

    // Why what was typed cannot be stored, "" when it can.
    virtual QString Refusal() const = 0;
    // A query returning a row when the entry exists already, and the refusal then.
    virtual QString DuplicateQuery() const = 0;
    virtual QString DuplicateMessage() const = 0;
    virtual QString InsertStatement() const = 0;
    // The query whose single value is the key just assigned.
    virtual QString NewIdQuery() const = 0;
    // Puts the new entry, with its key, where the catalogue window shows it.
    virtual void Publish(qint16 id) = 0;

    // "Aceptar": the steps above in order; closes on success.
    void Accept();

    WizardRun &m_run;
    frmConfiguracion &m_configuracion;
};
