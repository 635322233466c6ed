#include "TestUi.h"
#include "controls/Controls.h"
#include "controls/Form.h"

#include <gtest/gtest.h>

namespace {

// A window that writes what happens to it into a shared journal.
class Journaled : public Form
{
public:
    Journaled(Ui &ui, const QString &name, QStringList &journal) : Form(ui, name, name), m_journal(journal) {}
    void Form_Load() override
    {
        m_journal << Name() + " load";
        if (failLoad)
            throw std::runtime_error("sin base de datos");
    }
    void Form_Activate() override { m_journal << Name() + " activate"; }
    void Form_Unload(int &cancel) override
    {
        m_journal << Name() + " unload";
        cancel = refuseUnload ? 1 : 0;
    }
    // Opens `next` modally; when it returns, closes itself if `closeAll` is set.
    void OpenNext(const std::shared_ptr<Journaled> &next, const bool &closeAll)
    {
        ui().ShowModal(next, [this, &closeAll] {
            m_journal << Name() + " resumes";
            if (closeAll)
                Unload();
        });
    }
    bool refuseUnload = false;
    bool failLoad = false;

private:
    QStringList &m_journal;
};

class WindowStackTest : public ::testing::Test
{
protected:
    std::shared_ptr<Journaled> Open(const QString &name, Journaled *below = nullptr)
    {
        auto form = std::make_shared<Journaled>(ui, name, journal);
        if (below)
            below->OpenNext(form, closeAll);
        else
            ui.ShowModal(form);
        return form;
    }
    TestUi ui;
    QStringList journal;
    bool closeAll = false;
};

} // namespace

TEST_F(WindowStackTest, ShowingReturnsAtOnceAndGoingBackResumesTheWindowBelow)
{
    auto a = Open("a");
    auto b = Open("b", a.get());
    EXPECT_EQ(journal, (QStringList{"a load", "a activate", "b load", "b activate"}));
    EXPECT_EQ(ui.OpenWindows(), (QStringList{"a", "b"}));
    journal.clear();
    b->Unload();
    EXPECT_EQ(journal, (QStringList{"b unload", "a resumes", "a activate"}));
    EXPECT_TRUE(a->IsLoaded());
    EXPECT_FALSE(b->IsLoaded());
}

TEST_F(WindowStackTest, TheCloseAllFlagClosesTheWholeChainTopDown)
{
    auto a = Open("a");
    auto b = Open("b", a.get());
    auto c = Open("c", b.get());
    journal.clear();
    closeAll = true;
    c->Unload();
    EXPECT_EQ(journal, (QStringList{"c unload", "b resumes", "b unload", "a resumes", "a unload"}));
    EXPECT_EQ(ui.Closed(), (QStringList{"c", "b", "a"}));
}

TEST_F(WindowStackTest, AWindowMayRefuseToUnloadAndAFailedLoadLeavesNothingOpen)
{
    auto a = Open("a");
    a->refuseUnload = true;
    a->Unload();
    EXPECT_TRUE(a->IsLoaded());
    a->refuseUnload = false;
    a->Unload();
    a->Unload(); // not open any more: nothing happens
    EXPECT_EQ(journal.count("a unload"), 2);

    auto failing = std::make_shared<Journaled>(ui, "f", journal);
    failing->failLoad = true;
    EXPECT_THROW(ui.ShowModal(failing), std::runtime_error);
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
}

TEST(TestUiScript, QuestionsAreAnsweredInOrderAndMessagesRecorded)
{
    TestUi ui;
    ui.Answer(vbNo);
    ui.Beep();
    EXPECT_EQ(ui.MsgBox("¿Seguro?", vbYesNo | vbQuestion), vbNo);
    EXPECT_EQ(ui.MsgBox("¿Otra?", vbYesNo | vbQuestion), vbYes);
    EXPECT_EQ(ui.MsgBox("Hecho", vbInformation), vbOK);
    ASSERT_EQ(ui.Messages().size(), 3);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_FALSE(ui.Messages()[1].beeped);
    EXPECT_EQ(ui.Messages()[0].icon, vbQuestion);
    EXPECT_EQ(ui.Messages()[0].buttons, vbYesNo);
    EXPECT_EQ(ui.Messages()[2].icon, vbInformation);
}

// A window closed by its own button handler lives until that handler has
// returned: the rest of the handler still runs on a live window.
TEST(WindowLifetime, AWindowClosedByItsOwnHandlerDiesOnlyAfterTheHandler)
{
    class Closing : public Form
    {
    public:
        Closing(Ui &ui, bool &alive) : Form(ui, "frmCierre", "Cierre"), m_alive(alive) { m_alive = true; }
        ~Closing() override { m_alive = false; }
        CommandButton cmdCerrar{this, "cmdCerrar", "Cerrar"};
        bool &m_alive;
    };
    TestUi ui;
    bool alive = false;
    bool aliveAfterUnload = false;
    {
        auto form = std::make_shared<Closing>(ui, alive);
        Closing *raw = form.get();
        raw->cmdCerrar.Click = [raw, &alive, &aliveAfterUnload] {
            raw->Unload();
            aliveAfterUnload = alive;
            raw->cmdCerrar.SetCaption("Cerrado"); // still its own window
        };
        ui.ShowModal(form);
    }
    ASSERT_TRUE(alive);
    static_cast<Closing *>(ui.Stack().Top())->cmdCerrar.Press();
    EXPECT_TRUE(aliveAfterUnload);
    EXPECT_FALSE(alive); // gone once the handler returned
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
}
