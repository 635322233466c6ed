#include "GuiFixture.h"

// Buttons sorted by text: the platform orders them on screen.
TEST(MessageBoxes, TheStyleGivesTheIconButtonsAndAnswers)
{
    using Buttons = QList<std::pair<QString, int>>;
    const struct
    {
        int style;
        QMessageBox::Icon icon;
        Buttons buttons;
        int closed;
    } cases[] = {
        {vbOKOnly, QMessageBox::NoIcon, {{"Aceptar", vbOK}}, vbOK},
        {vbInformation + vbOKCancel, QMessageBox::Information, {{"Aceptar", vbOK}, {"Cancelar", vbCancel}}, vbCancel},
        {vbQuestion + vbYesNo, QMessageBox::Question, {{"No", vbNo}, {"Sí", vbYes}}, vbNo},
        {vbYesNoCancel, QMessageBox::NoIcon, {{"Cancelar", vbCancel}, {"No", vbNo}, {"Sí", vbYes}}, vbCancel},
    };
    for (const auto &c : cases) {
        auto box = QtUi::BuildMessageBox("Vendelar", "<b>no es HTML</b>", c.style, nullptr);
        Buttons shown;
        for (QAbstractButton *button : box->buttons())
            shown.append({button->text(), QtUi::AnswerOf(*box, button)});
        std::sort(shown.begin(), shown.end());
        EXPECT_EQ(std::tuple(shown, QtUi::AnswerOf(*box, nullptr), box->icon(), box->textFormat()),
                  std::tuple(c.buttons, c.closed, c.icon, Qt::PlainText))
            << c.style;
    }
}
