#pragma once

#include "controls/Ui.h"

#include <QList>
#include <QString>
#include <memory>

class ControlBase;

// A window without a toolkit: its controls are public members of the
// derived class, its event handlers public methods named after them. A view
// (Qt, or none in tests) shows it; the logic lives here.
class Form
{
public:
    Form(Ui &ui, const QString &name, const QString &caption);
    virtual ~Form();
    Form(const Form &) = delete;
    Form &operator=(const Form &) = delete;

    QString Name() const { return m_name; }
    QString Caption() const { return m_caption; }
    void SetCaption(const QString &caption) { m_caption = caption; }
    QString IconPath() const { return m_iconPath; }
    void SetIconPath(const QString &path) { m_iconPath = path; }

    // The window's controls in declaration order (the control collection).
    const QList<ControlBase *> &Controls() const { return m_controls; }
    ControlBase *FindControl(const QString &name) const;
    // The controls the host marks as mandatory.
    virtual QList<ControlBase *> MandatoryControls() { return {}; }

    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Unload(int &cancel) { (void)cancel; }

    void Unload() { m_ui.Unload(*this); }

    // A refusal: the system beep and `text` with the exclamation icon. The
    // caller then returns, leaving the window as it was.
    void Refuse(const QString &text);
    // Opens `next` modally over this window; when it closes, this window
    // closes too if `closeAll` (the run's close-all flag) is set by then.
    void ShowNextStep(std::shared_ptr<Form> next, const bool &closeAll);
    bool IsLoaded() const { return m_ui.IsLoaded(*this); }
    Ui &ui() const { return m_ui; }

    // Called by ControlBase's constructor.
    void RegisterControl(ControlBase *control) { m_controls.append(control); }

private:
    Ui &m_ui;
    QString m_name;
    QString m_caption;
    QString m_iconPath;
    QList<ControlBase *> m_controls;
};
