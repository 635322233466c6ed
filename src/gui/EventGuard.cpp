#include "gui/EventGuard.h"

#include "controls/Ui.h"

#include <QString>
#include <exception>

namespace {

// The window of the running handler stays alive until it returns.
class HandlerScope
{
public:
    explicit HandlerScope(Ui &ui) : m_ui(ui) { m_ui.EnterHandler(); }
    ~HandlerScope() { m_ui.LeaveHandler(); }
    HandlerScope(const HandlerScope &) = delete;
    HandlerScope &operator=(const HandlerScope &) = delete;

private:
    Ui &m_ui;
};

} // namespace

void RunGuarded(Ui &ui, const std::function<void()> &handler)
{
    QString error;
    try {
        const HandlerScope scope(ui);
        handler();
        return;
    } catch (const std::exception &e) {
        error = QString::fromUtf8(e.what());
    } catch (...) {
        error = QStringLiteral("Se ha producido un error inesperado.");
    }
    ui.SetMousePointer(vbDefault);
    ui.MsgBox(error, vbCritical);
}
