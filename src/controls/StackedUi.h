#pragma once

#include "controls/Ui.h"
#include "controls/WindowStack.h"

// The part of every Ui that keeps the modal windows on a WindowStack;
// front ends add how a window is shown and closed.
class StackedUi : public Ui
{
public:
    StackedUi();

    void ShowModal(std::shared_ptr<Form> form, std::function<void()> onReturn = {}) override;
    void Unload(Form &form) override;
    bool IsLoaded(const Form &form) const override;
    void EnterHandler() override;
    void LeaveHandler() override;

    WindowStack &Stack() { return m_stack; }
    const WindowStack &Stack() const { return m_stack; }

protected:
    virtual void FormShown(Form &form) { (void)form; }
    virtual void FormClosed(Form &form) { (void)form; }
    virtual void AllClosed() {}

private:
    WindowStack m_stack;
    int m_handlerDepth = 0;
};
