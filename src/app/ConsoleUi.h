#pragma once

#include "controls/StackedUi.h"

#include <QString>
#include <QStringList>
#include <cstdio>

// The windows run without a screen: every message is printed in Spanish
// (information on standard output, refusals and errors on standard error),
// every question is answered Yes, and the progress bars of each window are
// followed on the terminal. Refusals are kept so the caller can fail.
class ConsoleUi : public StackedUi
{
public:
    explicit ConsoleUi(FILE *out = stdout, FILE *err = stderr) : m_out(out), m_err(err) {}

    int MsgBox(const QString &text, int style = vbOKOnly) override;
    void Beep() override {}
    void RunUntilClosed() override {}
    void SetMousePointer(int) override {}
    void DoEvents() override {}
    void ShellOpen(const QString &path) override { m_opened << path; }

    // Messages with the exclamation or critical icon, in order.
    QStringList Refusals() const { return m_refusals; }
    // Information messages, in order.
    QStringList Notices() const { return m_notices; }
    // Documents the windows asked to open (not opened here).
    QStringList Opened() const { return m_opened; }

    void Print(const QString &line) const;
    void PrintError(const QString &line) const;

protected:
    void FormShown(Form &form) override;

private:
    FILE *m_out;
    FILE *m_err;
    QStringList m_refusals;
    QStringList m_notices;
    QStringList m_opened;
};
