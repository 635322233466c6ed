#include "controls/WindowStack.h"

#include "controls/Form.h"

void WindowStack::Push(std::shared_ptr<Form> form, std::function<void()> onReturn)
{
    m_entries.append(Entry{form, std::move(onReturn)});
    try {
        form->Form_Load();
    } catch (...) {
        const int index = IndexOf(*form);
        if (index >= 0)
            m_entries.removeAt(index);
        throw;
    }
    if (!Contains(*form)) // it unloaded itself while loading
        return;
    if (m_listener.shown)
        m_listener.shown(*form);
    form->Form_Activate();
}

void WindowStack::Unload(Form &form)
{
    const int index = IndexOf(form);
    if (index < 0 || m_entries[index].unloading)
        return;
    m_entries[index].unloading = true;
    int cancel = 0;
    try {
        form.Form_Unload(cancel);
    } catch (...) {
        m_entries[index].unloading = false;
        throw;
    }
    if (cancel != 0) {
        m_entries[index].unloading = false;
        return;
    }
    Entry entry = m_entries.takeAt(IndexOf(form));
    m_closed.append(entry.form);
    if (m_listener.closed)
        m_listener.closed(form);
    // The window below resumes: it may unload itself in turn.
    if (entry.onReturn)
        entry.onReturn();
    if (m_entries.isEmpty()) {
        if (m_listener.emptied)
            m_listener.emptied();
        return;
    }
    // Activate the new top only if nothing else happened to it meanwhile.
    if (Form *top = Top(); top && !m_entries.last().unloading && index == m_entries.size())
        top->Form_Activate();
}

bool WindowStack::Contains(const Form &form) const
{
    return IndexOf(form) >= 0;
}

Form *WindowStack::Top() const
{
    return m_entries.isEmpty() ? nullptr : m_entries.last().form.get();
}

QList<Form *> WindowStack::Forms() const
{
    QList<Form *> forms;
    for (const Entry &entry : m_entries)
        forms << entry.form.get();
    return forms;
}

int WindowStack::IndexOf(const Form &form) const
{
    for (int i = 0; i < m_entries.size(); ++i)
        if (m_entries.at(i).form.get() == &form)
            return i;
    return -1;
}
