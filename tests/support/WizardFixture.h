#pragma once

#include "TestUi.h"
#include "controls/ListControls.h"
#include "data/Installation.h"
#include "session/WizardRun.h"
#include "wizard/cAsignarDatos.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>

class frmSelCursos;
class frmSelActividad;
class frmActividadMes;
class frmActividadPonderacion;
class frmActividadAlumno;

// Failed comparisons show texts as texts.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

// A small school: two years, a few activities and families. Tests change
// the description before Install().
InstallationDescription SmallSchool();

// Builds an installation in a temporary folder, hands its session to the
// add-in as the host would, and drives the wizard's windows through a
// TestUi. Every statement any connection of the run sends is recorded.
class WizardFixture : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Builds `description` (SmallSchool() unless changed) and runs
    // ObtenerDatos with the session of its settings file.
    void Install();

    // The wizard run the add-in started for the session.
    WizardRun &run() { return *addin->Run(); }

    // Opens the first window as ActivarFormulario does.
    frmSelCursos &OpenWizard();
    // First window with the school chosen and the given years selected (by
    // name, in this order).
    frmSelCursos &SelectYears(const QStringList &years);
    // The window now on top, as the given type (fails the test if it is not).
    template <typename T> T &Top()
    {
        auto *form = dynamic_cast<T *>(ui.Stack().Top());
        if (!form)
            throw std::runtime_error("the window on top is not the expected one");
        return *form;
    }

    // The one message shown since the last ClearLog: its text, icon, and the
    // beep that comes with every refusal.
    void ExpectOnlyMessage(const QString &text, int icon = vbExclamation);

    // Statements run since the last call, optionally only those containing `filter`.
    QStringList TakeStatements(const QString &filter = QString());

    InstallationDescription description = SmallSchool();
    InstallationPaths paths;
    TestUi ui;
    std::unique_ptr<cAsignarDatos> addin;
    QStringList statements;
    QTemporaryDir dir;
};

// Selects the entry with this text (fails with a clear message if absent).
class ListControl;
void Pick(ListControl &list, const QString &text);
