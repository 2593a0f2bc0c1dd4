#include "GuiFixture.h"

#include "document/LXColorSampleModel.h"
#include "gui/SamplesWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "support/TestRegistry.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

/// The panel that reads out color samples.
class TestSamplesWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheViewsSamples();
    void tellsWhenThereIsNothingToShow();
    void letsGoOfAViewThatGoes();
    void controlsFollowTheSelectedSample();
    void sizeIsSetForTheSelectedSamples();
    void formatIsSetForTheSelectedSamples();
    void selectedSamplesAreDeletedInOneStep();
    void clearIsUndone();
    void rowShowsTheColor();
    void nothingWorksWhileTheDocumentIsLocked();
    void worksWithoutAHistory();
    void everyControlHasAName();

private:
    QListView* List() const { return m_pPanel->findChild<QListView*>("m_pList"); }

    QComboBox* Combo(const char* name) const { return m_pPanel->findChild<QComboBox*>(name); }

    QAbstractButton* Button(const char* name) const { return m_pPanel->findChild<QAbstractButton*>(name); }

    void Click(const char* button) const { QTest::mouseClick(Button(button), Qt::LeftButton); }

    LXColorSampleModel* Samples() const { return m_pDocument->GetColorSamples(); }

    void Select(const QList<int>& rows) const
    {
        List()->selectionModel()->clear();
        for (const int row : rows)
            List()->selectionModel()->select(Samples()->index(row), QItemSelectionModel::Select);
    }

    QList<QPoint> Points() const
    {
        QList<QPoint> points;
        for (int row = 0; row < Samples()->rowCount(); ++row)
            points << Samples()->GetPoint(row);
        return points;
    }

    GuiFixture::OwnedDocument m_pDocument;
    std::unique_ptr<LexoUndoStack> m_pHistory;
    std::unique_ptr<ZKDocumentView> m_pView;
    std::unique_ptr<SamplesWidget> m_pPanel;
};

namespace {
const QList<QPoint> AllPoints{{1, 2}, {3, 4}, {5, 6}};
}

void TestSamplesWidget::init()
{
    m_pDocument = GuiFixture::MakeDocument({64, 48}, QColor(200, 100, 50));
    for (const QPoint& point : AllPoints)
        Samples()->InsertSample(99, point);
    Samples()->SetSampleRadius(1, 2);
    Samples()->SetDisplayFormat(1, LXColorSampleModel::CMYK);
    m_pHistory = std::make_unique<LexoUndoStack>();
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel = std::make_unique<SamplesWidget>();
    m_pPanel->SetView(m_pView.get());
    m_pPanel->resize(260, 240);
    m_pPanel->show();
    QVERIFY(QTest::qWaitForWindowActive(m_pPanel.get()));
}

void TestSamplesWidget::cleanup()
{
    m_pPanel.reset();
    m_pView.reset();
    m_pHistory.reset();
    m_pDocument.reset();
}

void TestSamplesWidget::showsTheViewsSamples()
{
    QCOMPARE(List()->model(), Samples());
    QVERIFY(List()->isVisible());
    QVERIFY(!Combo("m_pSizeCmb")->isEnabled());
    QVERIFY(!Button("m_pDeleteBtn")->isEnabled());
    QVERIFY(Button("m_pClearBtn")->isEnabled());
}

void TestSamplesWidget::tellsWhenThereIsNothingToShow()
{
    const auto* noSample = m_pPanel->findChild<QLabel*>("m_pNoSampleLbl");
    const auto* noDocument = m_pPanel->findChild<QLabel*>("m_pNoDocumentLbl");
    QVERIFY(!noSample->isVisible());
    Click("m_pClearBtn");
    QVERIFY(noSample->isVisible());
    QVERIFY(!Button("m_pClearBtn")->isEnabled());
    m_pHistory->undo();
    QVERIFY(List()->isVisible());
    m_pPanel->SetView(nullptr);
    QVERIFY(noDocument->isVisible());
    QVERIFY(!Button("m_pClearBtn")->isEnabled());
}

void TestSamplesWidget::letsGoOfAViewThatGoes()
{
    m_pView.reset();
    QVERIFY(!Button("m_pClearBtn")->isEnabled());
    Samples()->RemoveSample(0);
    m_pView = std::make_unique<ZKDocumentView>(m_pDocument.get(), m_pHistory.get());
    m_pPanel->SetView(m_pView.get());
    QVERIFY(Button("m_pClearBtn")->isEnabled());
}

void TestSamplesWidget::controlsFollowTheSelectedSample()
{
    Select({1});
    QVERIFY(Combo("m_pSizeCmb")->isEnabled());
    QCOMPARE(Combo("m_pSizeCmb")->currentText(), QString("5x5 average"));
    QCOMPARE(Combo("m_pFormatCmb")->currentText(), QString("CMYK"));
    Select({0});
    QCOMPARE(Combo("m_pSizeCmb")->currentText(), QString("Point sample"));
    QCOMPARE(Combo("m_pFormatCmb")->currentText(), QString("RGB"));
    Samples()->SetSampleRadius(0, 3);
    QCOMPARE(Combo("m_pSizeCmb")->currentText(), QString("7x7 average"));
}

void TestSamplesWidget::sizeIsSetForTheSelectedSamples()
{
    Select({0, 2});
    Combo("m_pSizeCmb")->setFocus();
    QTest::keyClick(Combo("m_pSizeCmb"), Qt::Key_Down);
    QCOMPARE(Samples()->GetSampleRadius(0), 1);
    QCOMPARE(Samples()->GetSampleRadius(1), 2);
    QCOMPARE(Samples()->GetSampleRadius(2), 1);
    QCOMPARE(m_pHistory->count(), 0);
}

void TestSamplesWidget::formatIsSetForTheSelectedSamples()
{
    Select({0});
    Combo("m_pFormatCmb")->setFocus();
    QTest::keyClick(Combo("m_pFormatCmb"), Qt::Key_Down);
    QCOMPARE(Samples()->GetDisplayFormat(0), LXColorSampleModel::CMYK);
    QCOMPARE(Samples()->GetDisplayFormat(2), LXColorSampleModel::RGB);
    QCOMPARE(m_pHistory->count(), 0);
}

void TestSamplesWidget::selectedSamplesAreDeletedInOneStep()
{
    Select({0, 2});
    Click("m_pDeleteBtn");
    QCOMPARE(Points(), (QList<QPoint>{{3, 4}}));
    QCOMPARE(m_pHistory->count(), 1);
    m_pHistory->undo();
    QCOMPARE(Points(), AllPoints);
    Select({1});
    Click("m_pDeleteBtn");
    QCOMPARE(m_pHistory->text(0), QString("Remove sample point"));
    m_pHistory->undo();
    QCOMPARE(Points(), AllPoints);
    QCOMPARE(Samples()->GetSampleRadius(1), 2);
}

void TestSamplesWidget::clearIsUndone()
{
    Click("m_pClearBtn");
    QCOMPARE(Points(), QList<QPoint>());
    QCOMPARE(m_pHistory->text(0), QString("Clear color samples"));
    m_pHistory->undo();
    QCOMPARE(Points(), AllPoints);
}

void TestSamplesWidget::rowShowsTheColor()
{
    const QRect row = List()->visualRect(Samples()->index(0));
    const QImage shown = List()->viewport()->grab().toImage();
    const QColor swatch = shown.pixelColor(row.left() + 40, row.center().y());
    QCOMPARE(GuiFixture::Hex(swatch), GuiFixture::Hex(QColor(200, 100, 50)));
}

void TestSamplesWidget::nothingWorksWhileTheDocumentIsLocked()
{
    Select({1});
    QVERIFY(m_pDocument->Lock());
    QTRY_VERIFY(!Button("m_pDeleteBtn")->isEnabled());
    QVERIFY(!Button("m_pClearBtn")->isEnabled());
    QVERIFY(!Combo("m_pSizeCmb")->isEnabled());
    m_pDocument->Unlock();
    QTRY_VERIFY(Button("m_pDeleteBtn")->isEnabled());
}

void TestSamplesWidget::worksWithoutAHistory()
{
    ZKDocumentView view(m_pDocument.get(), nullptr);
    m_pPanel->SetView(&view);
    Select({0});
    Click("m_pDeleteBtn");
    QCOMPARE(Points().size(), 2);
    Click("m_pClearBtn");
    QCOMPARE(Points().size(), 0);
}

void TestSamplesWidget::everyControlHasAName()
{
    for (const char* name : {"m_pSizeCmb", "m_pFormatCmb"})
        QVERIFY2(!Combo(name)->accessibleName().isEmpty(), name);
    for (const char* name : {"m_pDeleteBtn", "m_pClearBtn"}) {
        QVERIFY2(!Button(name)->accessibleName().isEmpty(), name);
        QVERIFY2(Button(name)->focusPolicy() & Qt::TabFocus, name);
    }
    QVERIFY(!List()->accessibleName().isEmpty());
}

ZK_REGISTER_TEST(tst_sampleswidget, TestSamplesWidget)
#include "tst_sampleswidget.moc"
