#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>

class QDialog;

// Which widgets make up the window of each form, keyed by the form's name.
// The wizard's windows are built from their .ui files; other windows (or
// a test's) can be registered on one front end's factory.
class ViewFactory
{
public:
    // Fills `view` (an empty dialog) with the window's widgets, named as
    // the form's controls.
    using Builder = std::function<void(QDialog &view)>;

    // Knows the wizard's windows.
    ViewFactory();

    void Register(const QString &formName, Builder builder);
    bool Has(const QString &formName) const;
    QStringList Names() const;

    // Builds the window of `formName` into `view`. A form without a
    // registered window is a programming error: it stops a debug build; a
    // release build shows a window saying so, which its title bar closes.
    void Build(const QString &formName, QDialog &view) const;

private:
    QHash<QString, Builder> m_builders;
};
