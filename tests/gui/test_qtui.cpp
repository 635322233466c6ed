#include "GuiFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QMessageBox>
#include <QTimer>
#include <QUrl>

namespace {

// The buttons' texts in alphabetical order (the platform decides the
// order on screen).
QStringList ButtonTexts(const QMessageBox &box)
{
    QStringList texts;
    for (QAbstractButton *button : box.buttons())
        texts << button->text();
    texts.sort();
    return texts;
}

QStringList Sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

QAbstractButton *ButtonWithText(const QMessageBox &box, const QString &text)
{
    for (QAbstractButton *button : box.buttons())
        if (button->text() == text)
            return button;
    return nullptr;
}

} // namespace

class MessageBoxes : public GuiTest
{
};

TEST_F(MessageBoxes, TitledWithTheProductNameAndThePlainText)
{
    auto box = QtUi::BuildMessageBox(QStringLiteral("Línea uno\n<b>no es HTML</b>"), vbOKOnly, nullptr);
    EXPECT_EQ(box->windowTitle(), QStringLiteral("Vendelar"));
    EXPECT_EQ(box->text(), QStringLiteral("Línea uno\n<b>no es HTML</b>"));
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    EXPECT_EQ(box->icon(), QMessageBox::NoIcon);
}

TEST_F(MessageBoxes, TheIconComesFromTheStyle)
{
    EXPECT_EQ(QtUi::BuildMessageBox(QString(), vbCritical, nullptr)->icon(), QMessageBox::Critical);
    EXPECT_EQ(QtUi::BuildMessageBox(QString(), vbQuestion + vbYesNo, nullptr)->icon(), QMessageBox::Question);
    EXPECT_EQ(QtUi::BuildMessageBox(QString(), vbExclamation, nullptr)->icon(), QMessageBox::Warning);
    EXPECT_EQ(QtUi::BuildMessageBox(QString(), vbInformation + vbOKCancel, nullptr)->icon(), QMessageBox::Information);
}

TEST_F(MessageBoxes, TheButtonsAreSpanishAndAnswerAsThePlatform)
{
    auto ok = QtUi::BuildMessageBox(QString(), vbOKOnly, nullptr);
    EXPECT_EQ(ButtonTexts(*ok), QStringList{QStringLiteral("Aceptar")});
    EXPECT_EQ(QtUi::AnswerOf(*ok, ButtonWithText(*ok, QStringLiteral("Aceptar"))), vbOK);

    auto okCancel = QtUi::BuildMessageBox(QString(), vbOKCancel, nullptr);
    EXPECT_EQ(ButtonTexts(*okCancel), (QStringList{QStringLiteral("Aceptar"), QStringLiteral("Cancelar")}));
    EXPECT_EQ(QtUi::AnswerOf(*okCancel, ButtonWithText(*okCancel, QStringLiteral("Aceptar"))), vbOK);
    EXPECT_EQ(QtUi::AnswerOf(*okCancel, ButtonWithText(*okCancel, QStringLiteral("Cancelar"))), vbCancel);

    auto yesNo = QtUi::BuildMessageBox(QString(), vbYesNo + vbQuestion, nullptr);
    EXPECT_EQ(ButtonTexts(*yesNo), (QStringList{QStringLiteral("No"), QStringLiteral("Sí")}));
    EXPECT_EQ(QtUi::AnswerOf(*yesNo, ButtonWithText(*yesNo, QStringLiteral("Sí"))), vbYes);
    EXPECT_EQ(QtUi::AnswerOf(*yesNo, ButtonWithText(*yesNo, QStringLiteral("No"))), vbNo);

    auto yesNoCancel = QtUi::BuildMessageBox(QString(), vbYesNoCancel, nullptr);
    EXPECT_EQ(ButtonTexts(*yesNoCancel), (QStringList{QStringLiteral("Cancelar"), QStringLiteral("No"), QStringLiteral("Sí")}));
    EXPECT_EQ(QtUi::AnswerOf(*yesNoCancel, ButtonWithText(*yesNoCancel, QStringLiteral("Cancelar"))), vbCancel);
}

TEST_F(MessageBoxes, ClosedWithoutAButtonItAnswersAsItsEscapeButton)
{
    EXPECT_EQ(QtUi::AnswerOf(*QtUi::BuildMessageBox(QString(), vbOKOnly, nullptr), nullptr), vbOK);
    EXPECT_EQ(QtUi::AnswerOf(*QtUi::BuildMessageBox(QString(), vbOKCancel, nullptr), nullptr), vbCancel);
    EXPECT_EQ(QtUi::AnswerOf(*QtUi::BuildMessageBox(QString(), vbYesNo, nullptr), nullptr), vbNo);
    EXPECT_EQ(QtUi::AnswerOf(*QtUi::BuildMessageBox(QString(), vbYesNoCancel, nullptr), nullptr), vbCancel);
}

TEST_F(MessageBoxes, MsgBoxHandsTheBoxToThePresenterAndReturnsItsAnswer)
{
    answers << vbNo;
    EXPECT_EQ(qtUi.MsgBox(QStringLiteral("¿Desea guardar los cambios?"), vbYesNo + vbQuestion), vbNo);
    ASSERT_EQ(messages.size(), 1);
    EXPECT_EQ(messages[0].text, QStringLiteral("¿Desea guardar los cambios?"));
    EXPECT_EQ(messages[0].icon, QMessageBox::Question);
    EXPECT_EQ(Sorted(messages[0].buttons), (QStringList{QStringLiteral("No"), QStringLiteral("Sí")}));
    // No window is open: the box has no parent.
    EXPECT_EQ(messages[0].parent, nullptr);
}

TEST_F(MessageBoxes, TheDefaultPresenterShowsTheBoxModallyUntilAnswered)
{
    qtUi.SetMessagePresenter({});
    QString seenTitle;
    QObject timers;
    QTimer::singleShot(0, &timers, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        seenTitle = box->windowTitle();
        if (QAbstractButton *no = ButtonWithText(*box, QStringLiteral("No")))
            no->click();
    });
    // Should no box be found, the test must not hang.
    QTimer::singleShot(5000, &timers, [] {
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    EXPECT_EQ(qtUi.MsgBox(QStringLiteral("¿Continuar?"), vbYesNo + vbQuestion), vbNo);
    EXPECT_EQ(seenTitle, QStringLiteral("Vendelar"));
}

class DesktopServices : public GuiTest
{
};

TEST_F(DesktopServices, TheHourglassIsTheWaitCursorUntilTheDefaultPointer)
{
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    qtUi.SetMousePointer(vbHourglass);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    qtUi.SetMousePointer(vbHourglass);
    qtUi.SetMousePointer(vbDefault);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    qtUi.SetMousePointer(vbDefault);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(DesktopServices, AMessageUnderTheHourglassShowsTheArrow)
{
    Qt::CursorShape during = Qt::BlankCursor;
    qtUi.SetMessagePresenter([&](QMessageBox &) {
        during = QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::BlankCursor;
        return int(vbOK);
    });
    qtUi.SetMousePointer(vbHourglass);
    qtUi.MsgBox(QStringLiteral("Generando"), vbInformation);
    EXPECT_EQ(during, Qt::ArrowCursor);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    qtUi.SetMousePointer(vbDefault);
}

TEST_F(DesktopServices, ShellOpenOpensTheLocalFile)
{
    QList<QUrl> opened;
    qtUi.SetUrlOpener([&](const QUrl &url) {
        opened << url;
        return true;
    });
    const QString file = dir.filePath(QStringLiteral("Certificados Donaciones.docx"));
    qtUi.ShellOpen(file);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0].isLocalFile());
    EXPECT_EQ(opened[0].toLocalFile(), file);
}

TEST_F(DesktopServices, RunUntilClosedReturnsAtOnceWithNoWindowOpen)
{
    qtUi.RunUntilClosed();
    EXPECT_TRUE(qtUi.Stack().IsEmpty());
}
