#include "gui/ViewFactory.h"

#include "ui_frmActividadAlumno.h"
#include "ui_frmActividadMes.h"
#include "ui_frmActividadPonderacion.h"
#include "ui_frmSelActividad.h"
#include "ui_frmSelCursos.h"

#include <QDialog>
#include <QHash>
#include <QLabel>
#include <QVBoxLayout>
#include <QtGlobal>

namespace {

template <typename UiClass>
ViewFactory::Builder FromUiFile()
{
    return [](QDialog &view) {
        UiClass widgets;
        widgets.setupUi(&view);
    };
}

QHash<QString, ViewFactory::Builder> &Registry()
{
    static QHash<QString, ViewFactory::Builder> registry{
        {QStringLiteral("frmSelCursos"), FromUiFile<views::Ui_frmSelCursos>()},
        {QStringLiteral("frmSelActividad"), FromUiFile<views::Ui_frmSelActividad>()},
        {QStringLiteral("frmActividadMes"), FromUiFile<views::Ui_frmActividadMes>()},
        {QStringLiteral("frmActividadPonderacion"), FromUiFile<views::Ui_frmActividadPonderacion>()},
        {QStringLiteral("frmActividadAlumno"), FromUiFile<views::Ui_frmActividadAlumno>()},
    };
    return registry;
}

} // namespace

void ViewFactory::Register(const QString &formName, Builder builder)
{
    Registry().insert(formName, std::move(builder));
}

bool ViewFactory::Has(const QString &formName)
{
    return Registry().contains(formName);
}

QStringList ViewFactory::Names()
{
    QStringList names = Registry().keys();
    names.sort();
    return names;
}

void ViewFactory::Build(const QString &formName, QDialog &view)
{
    const auto builder = Registry().constFind(formName);
    if (builder != Registry().constEnd()) {
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
