#include "guicore/LXMessageBox.h"
#include "support/TestRegistry.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {
/// Does something to the box that the code after this call opens.
void WhenOpen(const std::function<void(LXMessageBox&)>& action)
{
    QTimer::singleShot(0, qApp, [action] {
        auto* box = qobject_cast<LXMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) qFatal("No message box is open.");
        action(*box);
    });
}

QStringList ButtonTexts(const LXMessageBox& box)
{
    QStringList texts;
    for (const QPushButton* button : box.findChildren<QPushButton*>()) {
        texts.append(button->text());
    }
    return texts;
}

QPushButton* FindButton(const LXMessageBox& box, const QString& text)
{
    for (QPushButton* button : box.findChildren<QPushButton*>()) {
        if (button->text() == text) return button;
    }
    qFatal("No button says \"%s\".", qPrintable(text));
    return nullptr;
}
} // namespace

class TestMessageBox : public QObject
{
    Q_OBJECT

private slots:
    void staticBoxesShowTheirWords_data();
    void staticBoxesShowTheirWords();
    void stockNumbers();
    void pressedStockButtonIsTheAnswer();
    void enterPressesTheDefaultButton();
    void closingTheFrameIsNoButton();
    void escapeIsNoButton();
    void aParentThatGoesIsNoButton_data();
    void aParentThatGoesIsNoButton();
    void aBoxThatIsDeletedWhileItAsksIsNoButton();
    void ownWordsAreAnsweredByClickedButton();
    void boxWithoutButtonsCanBeClosed();
    void textIsNotMarkup();
};

using StaticBox = LXMessageBox::Button (*)(QWidget*, const QString&, const QString&, LXMessageBox::Buttons,
                                           LXMessageBox::Button);
Q_DECLARE_METATYPE(StaticBox)

void TestMessageBox::staticBoxesShowTheirWords_data()
{
    QTest::addColumn<StaticBox>("show");
    QTest::addColumn<int>("icon");
    QTest::newRow("information") << &LXMessageBox::Information << 1;
    QTest::newRow("warning") << &LXMessageBox::Warning << 2;
    QTest::newRow("critical") << &LXMessageBox::Critical << 3;
}

void TestMessageBox::staticBoxesShowTheirWords()
{
    QFETCH(StaticBox, show);
    QFETCH(int, icon);
    QWidget parent;
    WhenOpen([&](LXMessageBox& box) {
        QCOMPARE(int(box.GetIcon()), icon);
        QCOMPARE(box.windowTitle(), QString("Zenkari"));
        QCOMPARE(box.GetText(), QString("Cannot fill. Layer is locked."));
        QCOMPARE(box.accessibleDescription(), box.GetText());
        QCOMPARE(box.parentWidget(), &parent);
        QCOMPARE(ButtonTexts(box), QStringList({"Close"}));
        FindButton(box, "Close")->click();
    });
    QCOMPARE(
        show(&parent, "Zenkari", "Cannot fill. Layer is locked.", LXMessageBox::Close, LXMessageBox::Close),
        LXMessageBox::Close);
}

void TestMessageBox::stockNumbers()
{
    QCOMPARE(int(LXMessageBox::Ok), 0x200000);
    QCOMPARE(int(LXMessageBox::NoButton), 0);
}

void TestMessageBox::pressedStockButtonIsTheAnswer()
{
    WhenOpen([](LXMessageBox& box) {
        QCOMPARE(ButtonTexts(box), QStringList({"&Save", "&Discard", "Cancel"}));
        FindButton(box, "&Discard")->click();
    });
    QCOMPARE(LXMessageBox::Warning(nullptr, "Zenkari", "Save?",
                                   LXMessageBox::Save | LXMessageBox::Discard | LXMessageBox::Cancel),
             LXMessageBox::Discard);
}

void TestMessageBox::enterPressesTheDefaultButton()
{
    WhenOpen([](LXMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    QCOMPARE(LXMessageBox::Warning(nullptr, "Zenkari", "Apply?", LXMessageBox::Yes | LXMessageBox::No,
                                   LXMessageBox::No),
             LXMessageBox::No);
    WhenOpen([](LXMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    QCOMPARE(LXMessageBox::Warning(nullptr, "Zenkari", "Apply?", LXMessageBox::Yes | LXMessageBox::No),
             LXMessageBox::Yes);
}

void TestMessageBox::closingTheFrameIsNoButton()
{
    WhenOpen([](LXMessageBox& box) { box.close(); });
    QCOMPARE(LXMessageBox::Information(nullptr, "Zenkari", "Done."), LXMessageBox::NoButton);
}

void TestMessageBox::escapeIsNoButton()
{
    WhenOpen([](LXMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(LXMessageBox::Critical(nullptr, "Zenkari", "Stop.", LXMessageBox::Ok | LXMessageBox::Cancel),
             LXMessageBox::NoButton);
}

void TestMessageBox::aParentThatGoesIsNoButton_data()
{
    staticBoxesShowTheirWords_data();
}

void TestMessageBox::aParentThatGoesIsNoButton()
{
    QFETCH(StaticBox, show);
    const QPointer<QWidget> parent(new QWidget);
    WhenOpen([parent](LXMessageBox&) { delete parent; });
    QCOMPARE(show(parent, "Zenkari", "Save?", LXMessageBox::Save | LXMessageBox::Discard, LXMessageBox::Save),
             LXMessageBox::NoButton);
    QVERIFY(!parent);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestMessageBox::aBoxThatIsDeletedWhileItAsksIsNoButton()
{
    auto* box = new LXMessageBox;
    box->AddButton(LXMessageBox::Ok);
    WhenOpen([](LXMessageBox& open) { delete &open; });
    QCOMPARE(box->Exec(), LXMessageBox::NoButton);
}

void TestMessageBox::ownWordsAreAnsweredByClickedButton()
{
    LXMessageBox box;
    box.SetWindowTitle("Zenkari");
    box.SetText("How do you want to proceed?");
    box.SetIcon(LXMessageBox::CriticalIcon);
    QPushButton* apply = box.AddButton("Apply");
    QPushButton* leave = box.AddButton("Do not apply");
    box.AddButton("Return back");
    box.SetDefaultButton(leave);
    QCOMPARE(box.ClickedButton(), nullptr);
    QCOMPARE(ButtonTexts(box), QStringList({"Apply", "Do not apply", "Return back"}));

    WhenOpen([](LXMessageBox& open) { QTest::keyClick(&open, Qt::Key_Return); });
    QCOMPARE(box.Exec(), LXMessageBox::NoButton);
    QCOMPARE(box.ClickedButton(), leave);

    WhenOpen([apply](LXMessageBox&) { apply->click(); });
    box.Exec();
    QCOMPARE(box.ClickedButton(), apply);

    WhenOpen([](LXMessageBox& open) { open.close(); });
    box.Exec();
    QCOMPARE(box.ClickedButton(), nullptr);
}

void TestMessageBox::boxWithoutButtonsCanBeClosed()
{
    LXMessageBox box;
    WhenOpen([](LXMessageBox& open) { FindButton(open, "Close")->click(); });
    QCOMPARE(box.Exec(), LXMessageBox::Close);
}

void TestMessageBox::textIsNotMarkup()
{
    LXMessageBox box;
    box.SetText("a <b>layer</b>");
    bool found = false;
    for (const QLabel* label : box.findChildren<QLabel*>()) {
        if (label->text() != box.GetText()) continue;
        QCOMPARE(label->textFormat(), Qt::PlainText);
        found = true;
    }
    QVERIFY(found);
}

ZK_REGISTER_TEST(tst_messagebox, TestMessageBox)
#include "tst_messagebox.moc"
