#include "TestUi.h"
#include "controls/Form.h"

#include <gtest/gtest.h>

namespace {

// A window that writes what happens to it into a shared journal.
class Journaled : public Form
{
public:
    Journaled(Ui &ui, const QString &name, QStringList &journal) : Form(ui, name, name), m_journal(journal) {}
    void Form_Load() override { m_journal << Name() + QStringLiteral(" load"); }
    void Form_Activate() override { m_journal << Name() + QStringLiteral(" activate"); }
    void Form_Unload(int &cancel) override
    {
        m_journal << Name() + QStringLiteral(" unload");
        cancel = refuseUnload ? 1 : 0;
    }
    // Opens `next` modally; when it returns, closes itself if `closeAll` is set.
    void OpenNext(const std::shared_ptr<Journaled> &next, const bool &closeAll)
    {
        ui().ShowModal(next, [this, &closeAll] {
            m_journal << Name() + QStringLiteral(" resumes");
            if (closeAll)
                Unload();
        });
    }
    bool refuseUnload = false;

private:
    QStringList &m_journal;
};

class WindowStackTest : public ::testing::Test
{
protected:
    std::shared_ptr<Journaled> Make(const QString &name) { return std::make_shared<Journaled>(ui, name, journal); }
    TestUi ui;
    QStringList journal;
    bool closeAll = false;
};

} // namespace

TEST_F(WindowStackTest, ShowingLoadsThenActivatesAndReturnsAtOnce)
{
    auto first = Make(QStringLiteral("uno"));
    ui.ShowModal(first);
    auto second = Make(QStringLiteral("dos"));
    first->OpenNext(second, closeAll);
    EXPECT_EQ(journal, (QStringList{QStringLiteral("uno load"), QStringLiteral("uno activate"),
                                    QStringLiteral("dos load"), QStringLiteral("dos activate")}));
    EXPECT_EQ(ui.OpenWindows(), (QStringList{QStringLiteral("uno"), QStringLiteral("dos")}));
}

TEST_F(WindowStackTest, GoingBackResumesAndReactivatesTheWindowBelow)
{
    auto first = Make(QStringLiteral("uno"));
    ui.ShowModal(first);
    auto second = Make(QStringLiteral("dos"));
    first->OpenNext(second, closeAll);
    journal.clear();
    second->Unload();
    EXPECT_EQ(journal, (QStringList{QStringLiteral("dos unload"), QStringLiteral("uno resumes"),
                                    QStringLiteral("uno activate")}));
    EXPECT_TRUE(first->IsLoaded());
    EXPECT_FALSE(second->IsLoaded());
}

TEST_F(WindowStackTest, TheCloseAllFlagClosesTheWholeChainTopDown)
{
    auto a = Make(QStringLiteral("a"));
    auto b = Make(QStringLiteral("b"));
    auto c = Make(QStringLiteral("c"));
    ui.ShowModal(a);
    a->OpenNext(b, closeAll);
    b->OpenNext(c, closeAll);
    journal.clear();
    closeAll = true;
    c->Unload();
    EXPECT_EQ(journal, (QStringList{QStringLiteral("c unload"), QStringLiteral("b resumes"), QStringLiteral("b unload"),
                                    QStringLiteral("a resumes"), QStringLiteral("a unload")}));
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
    EXPECT_EQ(ui.Closed(), (QStringList{QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("a")}));
}

TEST_F(WindowStackTest, AWindowMayRefuseToUnload)
{
    auto a = Make(QStringLiteral("a"));
    ui.ShowModal(a);
    a->refuseUnload = true;
    a->Unload();
    EXPECT_TRUE(a->IsLoaded());
    a->refuseUnload = false;
    a->Unload();
    EXPECT_FALSE(a->IsLoaded());
    a->Unload(); // not open any more: nothing happens
    EXPECT_EQ(journal.count(QStringLiteral("a unload")), 2);
}

TEST_F(WindowStackTest, ALoadThatThrowsLeavesNoWindowOpen)
{
    class Failing : public Form
    {
    public:
        using Form::Form;
        void Form_Load() override { throw std::runtime_error("sin base de datos"); }
    };
    auto failing = std::make_shared<Failing>(ui, QStringLiteral("f"), QStringLiteral("f"));
    EXPECT_THROW(ui.ShowModal(failing), std::runtime_error);
    EXPECT_TRUE(ui.OpenWindows().isEmpty());
}

TEST(TestUiScript, QuestionsAreAnsweredInOrderAndMessagesRecorded)
{
    TestUi ui;
    ui.Answer(vbNo);
    ui.Beep();
    EXPECT_EQ(ui.MsgBox(QStringLiteral("¿Seguro?"), vbYesNo | vbQuestion), vbNo);
    EXPECT_EQ(ui.MsgBox(QStringLiteral("¿Otra?"), vbYesNo | vbQuestion), vbYes);
    EXPECT_EQ(ui.MsgBox(QStringLiteral("Hecho"), vbInformation), vbOK);
    ASSERT_EQ(ui.Messages().size(), 3);
    EXPECT_TRUE(ui.Messages()[0].beeped);
    EXPECT_FALSE(ui.Messages()[1].beeped);
    EXPECT_EQ(ui.Messages()[0].icon, vbQuestion);
    EXPECT_EQ(ui.Messages()[0].buttons, vbYesNo);
    EXPECT_EQ(ui.Messages()[2].icon, vbInformation);
    EXPECT_EQ(ui.Beeps(), 1);
}
