#include "catalogue/NewEntryDialog.h"

#include "session/WizardRun.h"
#include "util/VbFormat.h"
#include "wizard/FormSetup.h"

NewEntryDialog::NewEntryDialog(WizardRun &run, frmConfiguracion &configuracion, const QString &name, const QString &caption)
    : Form(run.ui(), name, caption), m_run(run), m_configuracion(configuracion)
{
}

void NewEntryDialog::Form_Load()
{
    PrepareWizardWindow(*this, m_run);
}

void NewEntryDialog::Accept()
{
    const QString refusal = Refusal();
    if (!refusal.isEmpty())
        return Refuse(refusal);

    Connection &m182 = m_run.OpenM182();
    Recordset rs = m182.Execute(DuplicateQuery());
    const bool exists = !rs.Eof();
    rs.Close();
    if (exists)
        return Refuse(DuplicateMessage());

    m182.Execute(InsertStatement());
    rs = m182.Execute(NewIdQuery());
    const qint16 id = CInt(rs.Fields(0).toDouble());
    rs.Close();
    Publish(id);
    Unload();
}
