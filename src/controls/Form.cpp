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
