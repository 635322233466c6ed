#include "TestUi.h"

#include "controls/Form.h"

int TestUi::MsgBox(const QString &text, int style)
{
    const int buttons = style & kButtonsMask;
    int answer = vbOK;
    if (buttons == vbYesNo || buttons == vbYesNoCancel)
        answer = m_script.isEmpty() ? vbYes : m_script.takeFirst();
    else if (buttons == vbOKCancel)
        answer = m_script.isEmpty() ? vbOK : m_script.takeFirst();
    m_messages.append({text, style & kIconMask, buttons, answer, m_pendingBeep});
    m_pendingBeep = false;
    return answer;
}

void TestUi::Beep()
{
    ++m_beeps;
    m_pendingBeep = true;
}

QStringList TestUi::MessageTexts() const
{
    QStringList texts;
    for (const Message &message : m_messages)
        texts << message.text;
    return texts;
}

QStringList TestUi::OpenWindows() const
{
    QStringList names;
    for (Form *form : Stack().Forms())
        names << form->Name();
    return names;
}

void TestUi::ClearLog()
{
    m_messages.clear();
    m_shown.clear();
    m_closed.clear();
    m_beeps = 0;
    m_pendingBeep = false;
}

void TestUi::FormShown(Form &form)
{
    m_shown << form.Name();
}

void TestUi::FormClosed(Form &form)
{
    m_closed << form.Name();
}
