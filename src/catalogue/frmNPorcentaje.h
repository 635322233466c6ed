#pragma once

#include "catalogue/NewEntryDialog.h"
#include "controls/Controls.h"

#include <memory>
#include <optional>

class cCentroApi;

// "Nuevo Porcentaje": a deduction percentage from 0 to 100, typed in the
// user's number format.
class frmNPorcentaje : public NewEntryDialog
{
public:
    frmNPorcentaje(WizardRun &run, frmConfiguracion &configuracion);

    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Porcentaje de Deducción")};
    TextBox txtPorcentaje{this, QStringLiteral("txtPorcentaje")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Aceptar")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    QList<ControlBase *> MandatoryControls() override { return {&txtPorcentaje}; }
    // Every key goes through the host's amount filter first.
    void txtPorcentaje_KeyPress(int &keyAscii);
    void cmdAceptar_Click() { Accept(); }
    void cmdCancelar_Click() { Unload(); }

protected:
    QString Refusal() const override;
    QString DuplicateQuery() const override;
    QString DuplicateMessage() const override;
    QString InsertStatement() const override;
    QString NewIdQuery() const override;
    void Publish(qint16 id) override;

private:
    // The percentage typed, when it is a number from 0 to 100.
    std::optional<double> Percentage() const;
    // The percentage as the statements write it ("." as decimal point).
    QString SqlValue() const;

    std::shared_ptr<cCentroApi> m_api;
};
