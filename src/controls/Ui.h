#pragma once

#include <QString>
#include <functional>
#include <memory>

class Form;

// Message box styles and answers, with the platform's values.
enum MsgBoxStyle : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
};
enum MsgBoxResult : int { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };
enum MousePointer : int { vbDefault = 0, vbHourglass = 11 };

inline constexpr int kButtonsMask = 0x0F;
inline constexpr int kIconMask = 0x70;

// The one way windows reach the person: messages, the beep, modal windows,
// the pointer, opening a document. The Qt front end shows real windows; the
// test implementation records every call and answers from a script.
class Ui
{
public:
    virtual ~Ui() = default;

    // Shows a message titled with the product name; returns the answer.
    virtual int MsgBox(const QString &text, int style = vbOKOnly) = 0;
    virtual void Beep() = 0;

    // Opens `form` modally on top of the current window and returns at once.
    // When `form` unloads, `onReturn` runs (the rest of the caller's
    // handler: typically "if blnSalir, unload myself"), then the window
    // below is activated again.
    virtual void ShowModal(std::shared_ptr<Form> form, std::function<void()> onReturn = {}) = 0;
    virtual void Unload(Form &form) = 0;
    virtual bool IsLoaded(const Form &form) const = 0;
    // Waits until every window has closed (the host's modal call).
    virtual void RunUntilClosed() = 0;

    // Every event handler of a control runs between these two calls: a
    // window closed by a handler is destroyed only once the outermost
    // handler has returned, never while its own code is still running.
    virtual void EnterHandler() {}
    virtual void LeaveHandler() {}

    virtual void SetMousePointer(int pointer) = 0;
    virtual void DoEvents() = 0;
    virtual void ShellOpen(const QString &path) = 0;
};
