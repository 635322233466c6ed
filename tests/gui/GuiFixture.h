#pragma once

#include "WizardFixture.h"
#include "data/Installation.h"
#include "gui/QtUi.h"
#include "wizard/cAsignarDatos.h"

#include <QAbstractItemView>
#include <QMessageBox>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

class Form;
class QComboBox;
class frmSelCursos;

// What a message box showed, as the scripted presenter saw it.
struct ShownMessage
{
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;     // texts, in order
    QWidget *parent = nullptr;
    int answer = 0;
};

// Windows shown through the Qt front end (offscreen). Message boxes never
// block: a scripted presenter records them and answers from `answers`
// (vbOK / vbYes when the script is exhausted).
class GuiTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // Lets deferred deletions and posted events run.
    static void Flush();

    QWidget *TopView() const { return qtUi.TopView(); }
    // The widget of this name and type in the top window (throws when absent).
    template <typename W>
    W &Widget(const QString &name) const
    {
        QWidget *view = TopView();
        if (!view)
            throw std::runtime_error("no window is open");
        W *widget = view->findChild<W *>(name);
        if (!widget)
            throw std::runtime_error(("no widget " + name + " in " + view->objectName()).toStdString());
        return *widget;
    }

    QTemporaryDir dir;
    QtUi qtUi;
    QList<ShownMessage> messages;
    QList<int> answers;
};

// The small school of the wizard tests, installed in a temporary folder and
// handed to the add-in as the host would; the wizard's windows are real.
class GuiWizardTest : public GuiTest
{
protected:
    void TearDown() override;

    void Install();
    // Opens the first window as ActivarFormulario does, without waiting.
    frmSelCursos &OpenWizard();
    template <typename T>
    T &Top()
    {
        auto *form = dynamic_cast<T *>(qtUi.Stack().Top());
        if (!form)
            throw std::runtime_error("the window on top is not the expected one");
        return *form;
    }

    InstallationDescription description = SmallSchool();
    InstallationPaths paths;
    std::unique_ptr<cAsignarDatos> addin;
};

// What a person sees in a list or drop-down list: the texts of its entries.
QStringList Rows(const QAbstractItemView &view);
QStringList Rows(const QComboBox &combo);
// The texts of the windows' views, bottom first.
QStringList OpenViewTitles(const QtUi &ui);

// A person's doings, as real input events.
void ClickRow(QAbstractItemView &view, int row);
void ClickRow(QAbstractItemView &view, const QString &text);
void DoubleClickRow(QAbstractItemView &view, const QString &text);
void DoubleClickAt(QAbstractItemView &view, const QPoint &point);
void ClickAt(QAbstractItemView &view, const QPoint &point);
// Picks an entry of a drop-down list with the arrow keys.
void ChooseWithKeys(QComboBox &combo, const QString &text);
void PressKey(QWidget &widget, int key, const QString &text = QString());
