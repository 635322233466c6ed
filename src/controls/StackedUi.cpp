#include "controls/StackedUi.h"

#include "controls/Form.h"

StackedUi::StackedUi()
{
    m_stack.SetListener({[this](Form &form) { FormShown(form); },
                         [this](Form &form) { FormClosed(form); },
                         [this] { AllClosed(); }});
}

void StackedUi::ShowModal(std::shared_ptr<Form> form, std::function<void()> onReturn)
{
    m_stack.Push(std::move(form), std::move(onReturn));
}

void StackedUi::Unload(Form &form)
{
    m_stack.Unload(form);
}

bool StackedUi::IsLoaded(const Form &form) const
{
    return m_stack.Contains(form);
}
