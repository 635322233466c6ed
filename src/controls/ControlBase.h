#pragma once

#include <QString>
#include <functional>

class Form;

// What every control of a window has: its name, the states a person sees
// (enabled, visible, marked mandatory by the host) and a tooltip. Controls
// register themselves with their window when constructed.
class ControlBase
{
public:
    ControlBase(Form *owner, const QString &name);
    virtual ~ControlBase() = default;
    ControlBase(const ControlBase &) = delete;
    ControlBase &operator=(const ControlBase &) = delete;

    QString Name() const { return m_name; }
    Form *Owner() const { return m_owner; }

    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled);
    bool Visible() const { return m_visible; }
    void SetVisible(bool visible);
    bool Mandatory() const { return m_mandatory; }
    void SetMandatory(bool mandatory);
    QString ToolTipText() const { return m_toolTip; }
    void SetToolTipText(const QString &text);

protected:
    // Runs one of the control's event handlers (if set) inside the window's
    // handler scope.
    void Fire(const std::function<void()> &handler);

    // Tells the view to show the control's new state.
    virtual void NotifyChanged() = 0;

private:
    Form *m_owner;
    QString m_name;
    bool m_enabled = true;
    bool m_visible = true;
    bool m_mandatory = false;
    QString m_toolTip;
};
