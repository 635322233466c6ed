#include "controls/ControlBase.h"

#include "controls/Form.h"

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
