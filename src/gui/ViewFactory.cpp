#include "gui/ViewFactory.h"

#include "ui_frmActividadAlumno.h"
#include "ui_frmActividadMes.h"
#include "ui_frmActividadPonderacion.h"
#include "ui_frmConfiguracion.h"
#include "ui_frmNComAut.h"
#include "ui_frmNPorcentaje.h"
#include "ui_frmNTipoDeduccion.h"
#include "ui_frmSelActividad.h"
#include "ui_frmSelCursos.h"

#include <QDialog>
#include <QHash>
#include <QLabel>
#include <QVBoxLayout>
#include <QtGlobal>

namespace {

template <typename UiClass> ViewFactory::Builder FromUiFile()
{
    return [](QDialog &view) {
        UiClass widgets;
        widgets.setupUi(&view);
    };
}

} // namespace

ViewFactory::ViewFactory()
    : m_builders{
        {QStringLiteral("frmSelCursos"), FromUiFile<views::Ui_frmSelCursos>()},
        {QStringLiteral("frmSelActividad"), FromUiFile<views::Ui_frmSelActividad>()},
        {QStringLiteral("frmActividadMes"), FromUiFile<views::Ui_frmActividadMes>()},
        {QStringLiteral("frmActividadPonderacion"), FromUiFile<views::Ui_frmActividadPonderacion>()},
        {QStringLiteral("frmActividadAlumno"), FromUiFile<views::Ui_frmActividadAlumno>()},
        {QStringLiteral("frmConfiguracion"), FromUiFile<views::Ui_frmConfiguracion>()},
        {QStringLiteral("frmNComAut"), FromUiFile<views::Ui_frmNComAut>()},
        {QStringLiteral("frmNPorcentaje"), FromUiFile<views::Ui_frmNPorcentaje>()},
        {QStringLiteral("frmNTipoDeduccion"), FromUiFile<views::Ui_frmNTipoDeduccion>()},
    }
{
}

void ViewFactory::Register(const QString &formName, Builder builder)
{
    m_builders.insert(formName, std::move(builder));
}

bool ViewFactory::Has(const QString &formName) const
{
    return m_builders.contains(formName);
}

QStringList ViewFactory::Names() const
{
    QStringList names = m_builders.keys();
    names.sort();
    return names;
}

void ViewFactory::Build(const QString &formName, QDialog &view) const
{
    const auto builder = m_builders.constFind(formName);
    if (builder != m_builders.constEnd()) {
        (*builder)(view);
        return;
    }
#ifndef NDEBUG
    qFatal("ViewFactory: no window for the form %s", qPrintable(formName));
#else
    qCritical("ViewFactory: no window for the form %s", qPrintable(formName));
    view.setObjectName(formName);
    auto *layout = new QVBoxLayout(&view);
    layout->addWidget(new QLabel(QStringLiteral("Esta ventana no está disponible: ") + formName, &view));
#endif
}
