#pragma once

#include <QList>
#include <functional>
#include <memory>

class Form;

// The open modal windows, bottom first. Each entry keeps the continuation
// of the window below it, which runs when the entry's window unloads; this
// gives "each window waits for the next, then checks the close-all flag"
// without nested event loops.
class WindowStack
{
public:
    struct Listener
    {
        std::function<void(Form &)> shown;  // after Form_Load, before Form_Activate
        std::function<void(Form &)> closed; // after Form_Unload
        std::function<void()> emptied;      // the last window closed
    };

    void SetListener(Listener listener) { m_listener = std::move(listener); }

    // Loads and shows `form` on top; Form_Load then Form_Activate. A
    // Form_Load that throws leaves the stack as it was and rethrows.
    void Push(std::shared_ptr<Form> form, std::function<void()> onReturn);
    // Runs Form_Unload (which may cancel), removes the window, runs the
    // continuation stored with it and activates the window now on top.
    // Unloading a window that is not open does nothing.
    void Unload(Form &form);

    // Windows closed while a handler ran are kept until it has returned:
    // these end their lives (the Ui calls it when no handler runs).
    void ReleaseClosed() { m_closed.clear(); }
    int ClosedCount() const { return int(m_closed.size()); }

    bool Contains(const Form &form) const;
    Form *Top() const;
    int Count() const { return int(m_entries.size()); }
    bool IsEmpty() const { return m_entries.isEmpty(); }
    QList<Form *> Forms() const;

private:
    struct Entry
    {
        std::shared_ptr<Form> form;
        std::function<void()> onReturn;
        bool unloading = false;
    };
    int IndexOf(const Form &form) const;

    QList<Entry> m_entries;
    QList<std::shared_ptr<Form>> m_closed;
    Listener m_listener;
};
