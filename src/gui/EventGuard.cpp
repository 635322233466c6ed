#include "gui/EventGuard.h"

#include "controls/Ui.h"

#include <QString>
#include <exception>

void RunGuarded(Ui &ui, const std::function<void()> &handler)
{
    QString error;
    try {
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
