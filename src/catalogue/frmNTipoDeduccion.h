#pragma once

#include "catalogue/NewEntryDialog.h"
#include "controls/Controls.h"

// "Nuevo Tipo de Donativo": a donation type's name and its declaration code.
class frmNTipoDeduccion : public NewEntryDialog
{
public:
    frmNTipoDeduccion(WizardRun &run, frmConfiguracion &configuracion);

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Tipo de Donativo")};
    TextBox txtTDonativo{this, QStringLiteral("txtTDonativo")};
    Label Label2{this, QStringLiteral("Label2"), QStringLiteral("Código de Donativo")};
    TextBox txtCDonativo{this, QStringLiteral("txtCDonativo")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Aceptar")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    QList<ControlBase *> MandatoryControls() override { return {&txtTDonativo, &txtCDonativo}; }
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
