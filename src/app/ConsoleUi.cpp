#include "ConsoleUi.h"

#include "controls/Controls.h"
#include "controls/Form.h"

#include <QObject>

int ConsoleUi::MsgBox(const QString &text, int style)
{
    const int icon = style & kIconMask;
    const int buttons = style & kButtonsMask;
    if (buttons == vbYesNo || buttons == vbYesNoCancel) {
        Print(text + QStringLiteral(" -> Sí"));
        return vbYes;
    }
    if (icon == vbExclamation || icon == vbCritical) {
        m_refusals << text;
        PrintError(text);
    } else {
        m_notices << text;
        Print(text);
    }
    return vbOK;
}

void ConsoleUi::Print(const QString &line) const
{
    std::fprintf(m_out, "%s\n", line.toLocal8Bit().constData());
    std::fflush(m_out);
}

void ConsoleUi::PrintError(const QString &line) const
{
    std::fprintf(m_err, "%s\n", line.toLocal8Bit().constData());
    std::fflush(m_err);
}

void ConsoleUi::FormShown(Form &form)
{
    // The outer bars (school years, activities) line by line; the row bar
    // of the declaration in tenths.
    for (ControlBase *control : form.Controls()) {
        auto *bar = dynamic_cast<ProgressBar *>(control);
        if (!bar)
            continue;
        const QString name = bar->Name();
        QString label;
        if (name == QLatin1String("pbCursos"))
            label = QStringLiteral("Cursos escolares");
        else if (name == QLatin1String("pbActividades"))
            label = QStringLiteral("  Actividades");
        else if (name == QLatin1String("ProgressBar1"))
            label = QStringLiteral("Generación");
        else
            continue;
        auto last = std::make_shared<int>(-1);
        const bool tenths = name == QLatin1String("ProgressBar1");
        QObject::connect(bar, &Control::Changed, bar, [this, bar, label, last, tenths] {
            const int span = qMax(1, bar->Max() - bar->Min());
            const int step = tenths ? (bar->Value() - bar->Min()) * 10 / span : bar->Value();
            if (step == *last || bar->Value() <= 0)
                return;
            *last = step;
            Print(label + QStringLiteral(": ") + QString::number(bar->Value()) + QLatin1Char('/')
                  + QString::number(bar->Max()));
        });
    }
}
