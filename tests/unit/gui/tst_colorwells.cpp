#include "core/ZKApplication.h"
#include "gui/ColorWell.h"
#include "gui/ColorWells.h"
#include "gui/LXColorDlg.h"
#include "scripting/InputDriver.h"
#include "support/TestRegistry.h"

#include <QLineEdit>
#include <QTest>

/// The two colors at the foot of the tool box.
class TestColorWells : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClickAsksForThatColor_data();
    void aClickAsksForThatColor();
    void escapeKeepsTheColor();

private:
    QList<ColorWell*> Wells() const { return m_pWells->findChildren<ColorWell*>(); }

    ColorWell* Find(const QString& name) const;

    std::unique_ptr<ColorWells> m_pWells;
    InputDriver m_Input;
};

void TestColorWells::init()
{
    ColorWells::Reset();
    m_pWells = std::make_unique<ColorWells>();
    m_pWells->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pWells.get()));
}

void TestColorWells::cleanup()
{
    m_pWells.reset();
    ColorWells::Reset();
}

ColorWell* TestColorWells::Find(const QString& name) const
{
    const QList<ColorWell*> wells = Wells();
    const auto isNamed = [&name](const ColorWell* well) { return well->accessibleName() == name; };
    const auto found = std::find_if(wells.begin(), wells.end(), isNamed);
    return found == wells.end() ? nullptr : *found;
}

void TestColorWells::aClickAsksForThatColor_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QRgb>("before");
    QTest::addColumn<QRgb>("foreground");
    QTest::addColumn<QRgb>("background");
    QTest::newRow("foreground") << "Foreground color" << qRgb(0, 0, 0) << qRgb(255, 136, 0)
                                << qRgb(255, 255, 255);
    QTest::newRow("background") << "Background color" << qRgb(255, 255, 255) << qRgb(0, 0, 0)
                                << qRgb(255, 136, 0);
}

void TestColorWells::aClickAsksForThatColor()
{
    QFETCH(const QString, name);
    QFETCH(const QRgb, before);
    m_Input.WhenModalShows<LXColorDlg>([&](LXColorDlg* dialog) {
        QCOMPARE(dialog->windowTitle(), name);
        QCOMPARE(dialog->GetColor().rgb(), before);
        auto* text = dialog->findChild<QLineEdit*>("m_pHexEdt");
        text->setFocus();
        m_Input.Key(Qt::Key_A, Qt::ControlModifier);
        m_Input.Type("#f80");
        m_Input.Key(Qt::Key_Return);
    });
    // Its lower right corner isn't covered by the other one.
    m_Input.Click(Find(name), QPoint(20, 20));
    QCOMPARE(m_Input.CountWaitingActions(), 0);
    QTEST(ZKApplication::GetForeground().rgb(), "foreground");
    QTEST(ZKApplication::GetBackground().rgb(), "background");
    QCOMPARE(Find(name)->GetColor().rgb(), qRgb(255, 136, 0));
}

void TestColorWells::escapeKeepsTheColor()
{
    m_Input.WhenModalShows<LXColorDlg>([this](LXColorDlg*) {
        m_Input.Key(Qt::Key_Right);
        m_Input.Key(Qt::Key_Escape);
    });
    m_Input.Click(Find("Background color"), QPoint(20, 20));
    QCOMPARE(m_Input.CountWaitingActions(), 0);
    QCOMPARE(ZKApplication::GetBackground(), QColor(Qt::white));
}

ZK_REGISTER_TEST(tst_colorwells, TestColorWells)
#include "tst_colorwells.moc"
