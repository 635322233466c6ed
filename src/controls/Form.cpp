#include "controls/Form.h"

#include "controls/ControlBase.h"

Form::Form(Ui &ui, const QString &name, const QString &caption) : m_ui(ui), m_name(name), m_caption(caption)
{
}

Form::~Form() = default;

ControlBase *Form::FindControl(const QString &name) const
{
    for (ControlBase *control : m_controls)
        if (control->Name() == name)
            return control;
    return nullptr;
}

void Form::Refuse(const QString &text)
{
    m_ui.Beep();
    m_ui.MsgBox(text, vbExclamation);
}

void Form::ShowNextStep(std::shared_ptr<Form> next, const bool &closeAll)
{
    m_ui.ShowModal(std::move(next), [this, &closeAll] {
        if (closeAll)
            Unload();
    });
}
