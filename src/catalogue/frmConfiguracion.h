#pragma once

#include "catalogue/LinkStatements.h"
#include "controls/Controls.h"
#include "controls/Form.h"
#include "controls/ListControls.h"
#include "wizard/Registros.h"

#include <optional>

class WizardRun;
class frmActividadPonderacion;
class frmSelCursos;

// The deduction catalogue: which percentages each autonomous community and
// each donation type allow. Link changes are kept here and written only by
// "Aceptar"; links the running wizard uses cannot be removed.
class frmConfiguracion : public Form
{
public:
    frmConfiguracion(WizardRun &run, frmSelCursos &cursos, frmActividadPonderacion &paso);

    Frame Frame2{this, QStringLiteral("Frame2"), QStringLiteral("Deducción por Comunidades Autónomas")};
    Label Label4{this, QStringLiteral("Label4"), QStringLiteral("Comunidad Autónoma")};
    ComboBox cboComAut{this, QStringLiteral("cboComAut")};
    Label Label3{this, QStringLiteral("Label3"), QStringLiteral("Porcentaje")};
    ComboBox cboPorc{this, QStringLiteral("cboPorc")};
    CommandButton cmdNComAut{this, QStringLiteral("cmdNComAut"), QStringLiteral("Nueva...")};
    CommandButton cmdNPorc{this, QStringLiteral("cmdNPorc"), QStringLiteral("Nuevo...")};
    ListBox lstComAut{this, QStringLiteral("lstComAut")};
    CommandButton cmdAnadirComPor{this, QStringLiteral("cmdAnadirComPor"), QStringLiteral("Añadir")};
    CommandButton cmdEliminarComPor{this, QStringLiteral("cmdEliminarComPor"), QStringLiteral("Eliminar")};
    Frame Frame1{this, QStringLiteral("Frame1"), QStringLiteral("Deducción por Tipos")};
    Label Label1{this, QStringLiteral("Label1"), QStringLiteral("Tipo de donativo")};
    ComboBox cboTipo{this, QStringLiteral("cboTipo")};
    Label Label2{this, QStringLiteral("Label2"), QStringLiteral("Porcentaje")};
    ComboBox cboDeduccion{this, QStringLiteral("cboDeduccion")};
    CommandButton cmdNTipo{this, QStringLiteral("cmdNTipo"), QStringLiteral("Nuevo...")};
    CommandButton cmdNDeduc{this, QStringLiteral("cmdNDeduc"), QStringLiteral("Nuevo...")};
    ListBox lstDeducPorc{this, QStringLiteral("lstDeducPorc")};
    CommandButton cmdAnadirTPor{this, QStringLiteral("cmdAnadirTPor"), QStringLiteral("Añadir")};
    CommandButton cmdElimTPor{this, QStringLiteral("cmdElimTPor"), QStringLiteral("Eliminar")};
    CommandButton cmdAceptar{this, QStringLiteral("cmdAceptar"), QStringLiteral("Aceptar")};
    CommandButton cmdCancelar{this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    void Form_Load() override;
    void cboComAut_Click();
    void cboTipo_Click();
    void cmdAnadirComPor_Click();
    void cmdEliminarComPor_Click();
    void cmdAnadirTPor_Click();
    void cmdElimTPor_Click();
    void cmdNComAut_Click();
    void cmdNPorc_Click();
    void cmdNTipo_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click() { Unload(); }

    // The links as edited so far.
    const CommunityLinks &ComunidadesDeducciones() const { return m_comunidades; }
    const TypeLinks &TiposDeducciones() const { return m_tipos; }
    // The wizard's community records, which a new community joins.
    ColComAut &ComunidadesDelAsistente();
    WizardRun &Run() const { return m_run; }

private:
    void LoadCombos();
    void LoadLinks();
    // A line of either list: owner name, " <-> ", percentage.
    QString EntryText(const QString &nombre, float valor) const;
    // The percentage a combo shows, or a refusal naming it.
    std::optional<float> SelectedPercentage(const ComboBox &combo);
    // The information message of a pair already linked.
    void Inform(const QString &text);
    // Whether the deduction step has an activity with this type and percentage.
    bool PairInUse(const QString &entrada) const;

    WizardRun &m_run;
    frmSelCursos &m_cursos;
    frmActividadPonderacion &m_paso;
    CommunityLinks m_comunidades;
    TypeLinks m_tipos;
};
