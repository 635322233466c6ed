#include "controls/ControlBase.h"

#include "controls/Form.h"

namespace {

// Keeps the window of a running handler alive until the handler returns.
class HandlerScope
{
public:
    explicit HandlerScope(Form *form) : m_ui(form ? &form->ui() : nullptr)
    {
        if (m_ui)
            m_ui->EnterHandler();
    }
    ~HandlerScope()
    {
        if (m_ui)
            m_ui->LeaveHandler();
    }
    HandlerScope(const HandlerScope &) = delete;
    HandlerScope &operator=(const HandlerScope &) = delete;

private:
    Ui *m_ui;
};

} // namespace

ControlBase::ControlBase(Form *owner, const QString &name) : m_owner(owner), m_name(name)
{
    if (owner)
        owner->RegisterControl(this);
}

void ControlBase::SetEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    NotifyChanged();
}

void ControlBase::SetVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    NotifyChanged();
}

void ControlBase::SetMandatory(bool mandatory)
{
    if (m_mandatory == mandatory)
        return;
    m_mandatory = mandatory;
    NotifyChanged();
}

void ControlBase::SetToolTipText(const QString &text)
{
    m_toolTip = text;
    NotifyChanged();
}

void ControlBase::Fire(const std::function<void()> &handler)
{
    if (!handler)
        return;
    HandlerScope scope(m_owner);
    handler();
}
