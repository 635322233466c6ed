#include "controls/StackedUi.h"

#include "controls/Form.h"

StackedUi::StackedUi()
{
    m_stack.SetListener(
        {[this](Form &form) { FormShown(form); }, [this](Form &form) { FormClosed(form); }, [this] { AllClosed(); }});
}

void StackedUi::ShowModal(std::shared_ptr<Form> form, std::function<void()> onReturn)
{
    m_stack.Push(std::move(form), std::move(onReturn));
}

void StackedUi::Unload(Form &form)
{
    m_stack.Unload(form);
}

void StackedUi::EnterHandler()
{
    // No handler runs: windows closed by an earlier one (or by a direct
    // call) can go now.
    if (m_handlerDepth++ == 0)
        m_stack.ReleaseClosed();
}

void StackedUi::LeaveHandler()
{
    if (--m_handlerDepth == 0)
        m_stack.ReleaseClosed();
}

bool StackedUi::IsLoaded(const Form &form) const
{
    return m_stack.Contains(form);
}
