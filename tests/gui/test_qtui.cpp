#include "GuiFixture.h"

#include <QCursor>
#include <QTimer>
#include <QUrl>
#include <algorithm>

using MessageBoxes = GuiTest;

// Every style: the icon, the Spanish buttons (alphabetically: the platform
// orders them on screen) with each one's answer, and the answer of a box
// closed without a button (its escape button's).
TEST_F(MessageBoxes, TheStyleGivesTheIconButtonsAndAnswers)
{
    using Buttons = QList<std::pair<QString, int>>;
    const struct { int style; QMessageBox::Icon icon; Buttons buttons; int closed; } cases[] = {
        {vbOKOnly, QMessageBox::NoIcon, {{"Aceptar", vbOK}}, vbOK},
        {vbCritical, QMessageBox::Critical, {{"Aceptar", vbOK}}, vbOK},
        {vbExclamation, QMessageBox::Warning, {{"Aceptar", vbOK}}, vbOK},
        {vbInformation + vbOKCancel, QMessageBox::Information, {{"Aceptar", vbOK}, {"Cancelar", vbCancel}}, vbCancel},
        {vbQuestion + vbYesNo, QMessageBox::Question, {{"No", vbNo}, {"Sí", vbYes}}, vbNo},
        {vbYesNoCancel, QMessageBox::NoIcon, {{"Cancelar", vbCancel}, {"No", vbNo}, {"Sí", vbYes}}, vbCancel},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.style);
        auto box = QtUi::BuildMessageBox("Línea uno\n<b>no es HTML</b>", c.style, nullptr);
        EXPECT_EQ(box->windowTitle(), "Vendelar");
        EXPECT_EQ(box->text(), "Línea uno\n<b>no es HTML</b>");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->icon(), c.icon);
        Buttons shown;
        for (QAbstractButton *button : box->buttons())
            shown.append({button->text(), QtUi::AnswerOf(*box, button)});
        std::sort(shown.begin(), shown.end());
        EXPECT_EQ(shown, c.buttons);
        EXPECT_EQ(QtUi::AnswerOf(*box, nullptr), c.closed);
    }
}

TEST_F(MessageBoxes, TheDefaultPresenterRunsTheBoxModallyAndAnswersTheClickedButton)
{
    qtUi.SetMessagePresenter({});
    QString seen;
    QObject timers;
    QTimer::singleShot(0, &timers, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        for (QAbstractButton *button : box ? box->buttons() : QList<QAbstractButton *>())
            if (button->text() == "No") {
                seen = box->windowTitle();
                button->click();
            }
    });
    QTimer::singleShot(5000, &timers, [] { // should no box be found, the test must not hang
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    EXPECT_EQ(qtUi.MsgBox("¿Continuar?", vbYesNo + vbQuestion), vbNo);
    EXPECT_EQ(seen, "Vendelar");
}

using DesktopServices = GuiTest;

// The hourglass is the wait cursor until the default pointer, however often
// it is asked for; a message under it shows the arrow. MsgBox returns what
// the presenter answered.
TEST_F(DesktopServices, TheHourglassAndTheArrowOfAMessage)
{
    const auto cursor = [] { // BlankCursor: none set
        return QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::BlankCursor;
    };
    Qt::CursorShape during = Qt::BlankCursor;
    qtUi.SetMessagePresenter([&](QMessageBox &box) {
        during = cursor();
        EXPECT_EQ(box.parentWidget(), nullptr); // no window is open
        return int(vbNo);
    });
    EXPECT_EQ(cursor(), Qt::BlankCursor);
    qtUi.SetMousePointer(vbHourglass);
    qtUi.SetMousePointer(vbHourglass);
    EXPECT_EQ(qtUi.MsgBox("¿Continuar?", vbYesNo), vbNo);
    EXPECT_EQ(during, Qt::ArrowCursor);
    EXPECT_EQ(cursor(), Qt::WaitCursor);
    qtUi.SetMousePointer(vbDefault);
    EXPECT_EQ(cursor(), Qt::BlankCursor);
}

TEST_F(DesktopServices, ShellOpenOpensTheLocalFile)
{
    QList<QUrl> opened;
    qtUi.SetUrlOpener([&](const QUrl &url) { opened << url; return true; });
    const QString file = dir.filePath("Certificados Donaciones.docx");
    qtUi.ShellOpen(file);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0].isLocalFile());
    EXPECT_EQ(opened[0].toLocalFile(), file);
}
