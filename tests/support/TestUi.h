#pragma once

#include "controls/StackedUi.h"

#include <QList>
#include <QString>
#include <QStringList>

// A Ui for tests: records every message (text, icon, buttons), every beep
// and every window shown or closed, and answers questions from a script.
class TestUi : public StackedUi
{
public:
    struct Message
    {
        QString text;
        int icon = 0;    // vbCritical, vbQuestion, vbExclamation, vbInformation or 0
        int buttons = 0; // vbOKOnly, vbYesNo, ...
        int answer = 0;
        bool beeped = false; // a beep came right before it
    };

    int MsgBox(const QString &text, int style = vbOKOnly) override;
    void Beep() override;
    void RunUntilClosed() override {}
    void SetMousePointer(int pointer) override { m_pointers << pointer; }
    void DoEvents() override {}
    void ShellOpen(const QString &path) override { m_opened << path; }

    // Answers for the next questions, in order; vbOK/vbYes when the script
    // is exhausted.
    void Answer(int answer) { m_script << answer; }

    const QList<Message> &Messages() const { return m_messages; }
    QStringList MessageTexts() const;
    int Beeps() const { return m_beeps; }
    QStringList Shown() const { return m_shown; } // window names, in order
    QStringList Closed() const { return m_closed; }
    QStringList OpenWindows() const; // bottom first
    QList<int> Pointers() const { return m_pointers; }
    QStringList Opened() const { return m_opened; } // documents handed to ShellOpen
    void ClearLog();

protected:
    void FormShown(Form &form) override;
    void FormClosed(Form &form) override;

private:
    QList<Message> m_messages;
    QList<int> m_script;
    QStringList m_shown;
    QStringList m_closed;
    QStringList m_opened;
    QList<int> m_pointers;
    int m_beeps = 0;
    bool m_pendingBeep = false;
};
