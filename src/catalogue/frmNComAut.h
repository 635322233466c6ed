#pragma once

#include "catalogue/NewEntryDialog.h"
#include "controls/Controls.h"

// "Nueva Comunidad Autónoma": a community's name and its two-digit code.
class frmNComAut : public NewEntryDialog
{
public:
    frmNComAut(WizardRun &run, frmConfiguracion &configuracion);

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Comunidad Autónoma")};
    TextBox txtNomComAut{this, QStringLiteral("txtNomComAut")};
    Label Label2{this, QStringLiteral("Label2"), QStringLiteral("Código de la Comunidad Autónoma")};
    TextBox txtCodComAut{this, QStringLiteral("txtCodComAut")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Aceptar")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    QList<ControlBase *> MandatoryControls() override { return {&txtNomComAut, &txtCodComAut}; }
    void cmdAceptar_Click() { Accept(); }
    void cmdCancelar_Click() { Unload(); }

protected:
    QString Refusal() const override;
    QString DuplicateQuery() const override;
    QString DuplicateMessage() const override;
    QString InsertStatement() const override;
    QString NewIdQuery() const override;
    void Publish(qint16 id) override;
};
