#include "GuiFixture.h"

#include "document/LXDocumentModel.h"
#include "gui/AdjustmentPanel.h"
#include "gui/AdjustmentWidget.h"
#include "gui/LayerOperations.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "support/TestRegistry.h"

#include <QDoubleSpinBox>
#include <QItemSelectionModel>
#include <QListView>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include <memory>

using GuiFixture::MakeDocument;
using GuiFixture::OwnedDocument;

namespace {
LXAdjustment Of(LXAdjustment::Kind kind)
{
    LXAdjustment adjustment;
    adjustment.kind = kind;
    return adjustment;
}
} // namespace

/// The sliders of an adjustment, and what they do to the history.
class TestAdjustmentWidget : public QObject
{
    Q_OBJECT

private slots:
    void eachKindShowsItsOwnSliders();
    void sliderAndNumberSayTheSame();
    void aDraggedSliderIsOneStep();
    void thePanelShowsTheSelectedAdjustmentOnly();
    void everyControlTellsItsValue();
    void anotherStepEndsTheDrag();
    void nothingWorksWhileTheDocumentIsLocked();
    void theRowShowsWhatTheLayerIs();
};

void TestAdjustmentWidget::eachKindShowsItsOwnSliders()
{
    AdjustmentWidget widget;
    widget.show();
    const auto isShown = [&](const char* name) { return widget.findChild<QSlider*>(name)->isVisible(); };
    widget.SetAdjustment(Of(LXAdjustment::BrightnessContrast));
    QVERIFY(isShown("m_pBrightnessSldr") && !isShown("m_pGammaSldr") && !isShown("m_pHueSldr"));
    const int height = widget.sizeHint().height();
    widget.SetAdjustment(Of(LXAdjustment::Levels));
    QVERIFY(!isShown("m_pBrightnessSldr") && isShown("m_pGammaSldr") && !isShown("m_pHueSldr"));
    QVERIFY(widget.sizeHint().height() > height);
    widget.SetAdjustment(Of(LXAdjustment::HueSaturation));
    QVERIFY(isShown("m_pHueSldr") && isShown("m_pLightnessSldr") && !isShown("m_pInWhiteSldr"));
    widget.SetAdjustment(Of(LXAdjustment::Invert));
    QVERIFY(!isShown("m_pHueSldr"));
}

void TestAdjustmentWidget::sliderAndNumberSayTheSame()
{
    AdjustmentWidget widget;
    QSignalSpy changed(&widget, &AdjustmentWidget::Changed);
    LXAdjustment levels = Of(LXAdjustment::Levels);
    levels.inBlack = 12;
    levels.gamma = 0.55;
    widget.SetAdjustment(levels);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(widget.findChild<QSlider*>("m_pInBlackSldr")->value(), 12);
    QCOMPARE(widget.findChild<QSlider*>("m_pGammaSldr")->value(), 55);
    QCOMPARE(widget.findChild<QDoubleSpinBox*>("m_pGammaSpn")->value(), 0.55);
    widget.findChild<QSlider*>("m_pInBlackSldr")->setValue(99);
    QCOMPARE(widget.findChild<QSpinBox*>("m_pInBlackSpn")->value(), 99);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.last().first().value<LXAdjustment>().inBlack, 99);
    // What isn't shown in steps of the slider stays as it is.
    QCOMPARE(changed.last().first().value<LXAdjustment>().gamma, 0.55);
}

void TestAdjustmentWidget::aDraggedSliderIsOneStep()
{
    const OwnedDocument document = MakeDocument({20, 10});
    document->AddAdjustmentLayer("levels", Of(LXAdjustment::Levels));
    LexoUndoStack history;
    ZKDocumentView view(document.get(), &history);
    view.GetLayerSelection()->select(document->GetModel()->index(0), QItemSelectionModel::ClearAndSelect);
    AdjustmentPanel panel;
    panel.SetView(&view);
    auto* slider = panel.findChild<QSlider*>("m_pInBlackSldr");
    slider->setSliderDown(true);
    for (const int value : {10, 60, 40})
        slider->setValue(value);
    QCOMPARE(document->GetAdjustment(1).inBlack, 40);
    QCOMPARE(history.count(), 0);
    slider->setSliderDown(false);
    QCOMPARE(history.count(), 1);
    QCOMPARE(history.text(0), QString("Change adjustment"));
    history.undo();
    QCOMPARE(document->GetAdjustment(1).inBlack, 0);
    QCOMPARE(slider->value(), 0);
    history.redo();
    QCOMPARE(document->GetAdjustment(1).inBlack, 40);
    panel.SetView(nullptr);
}

void TestAdjustmentWidget::thePanelShowsTheSelectedAdjustmentOnly()
{
    const OwnedDocument document = MakeDocument({20, 10});
    document->AddAdjustmentLayer("levels", Of(LXAdjustment::Levels));
    LexoUndoStack history;
    auto view = std::make_unique<ZKDocumentView>(document.get(), &history);
    AdjustmentPanel panel;
    panel.show();
    const auto* slider = panel.findChild<QSlider*>("m_pInBlackSldr");
    QVERIFY(!slider->isVisible());
    panel.SetView(view.get());
    const auto select = [&](int row) {
        view->GetLayerSelection()->select(document->GetModel()->index(row),
                                          QItemSelectionModel::ClearAndSelect);
    };
    select(0);
    QVERIFY(slider->isVisible() && slider->isEnabled());
    select(1);
    QVERIFY(!slider->isVisible());
    select(0);
    document->Lock();
    QTRY_VERIFY(!slider->isEnabled());
    document->Unlock();
    view.reset();
    QVERIFY(!slider->isVisible());
}

void TestAdjustmentWidget::everyControlTellsItsValue()
{
    const std::pair<const char*, int LXAdjustment::*> controls[] = {{"Brightness", &LXAdjustment::brightness},
                                                                    {"Contrast", &LXAdjustment::contrast},
                                                                    {"InBlack", &LXAdjustment::inBlack},
                                                                    {"InWhite", &LXAdjustment::inWhite},
                                                                    {"OutBlack", &LXAdjustment::outBlack},
                                                                    {"OutWhite", &LXAdjustment::outWhite},
                                                                    {"Hue", &LXAdjustment::hue},
                                                                    {"Saturation", &LXAdjustment::saturation},
                                                                    {"Lightness", &LXAdjustment::lightness}};
    AdjustmentWidget widget;
    LXAdjustment told;
    connect(&widget, &AdjustmentWidget::Changed, [&told](const LXAdjustment& a) { told = a; });
    for (const auto& [name, value] : controls) {
        auto* spin = widget.findChild<QSpinBox*>(QString("m_p%1Spn").arg(name));
        spin->setValue(17);
        QCOMPARE(told.*value, 17);
        widget.findChild<QSlider*>(QString("m_p%1Sldr").arg(name))->setValue(18);
        QCOMPARE(told.*value, 18);
        QVERIFY(!spin->accessibleName().isEmpty());
    }
    widget.findChild<QDoubleSpinBox*>("m_pGammaSpn")->setValue(2.5);
    QCOMPARE(told.gamma, 2.5);
    widget.findChild<QSlider*>("m_pGammaSldr")->setValue(300);
    QCOMPARE(told.gamma, 3.0);
}

/// Undo in the middle of a drag takes the drag back; what comes then is a step of its own.
void TestAdjustmentWidget::anotherStepEndsTheDrag()
{
    const OwnedDocument document = MakeDocument({20, 10});
    document->AddAdjustmentLayer("levels", Of(LXAdjustment::Levels));
    LexoUndoStack history;
    ZKDocumentView view(document.get(), &history);
    view.GetLayerSelection()->select(document->GetModel()->index(0), QItemSelectionModel::ClearAndSelect);
    LayerOperations operations;
    operations.SetView(&view);
    LXAdjustment wanted = Of(LXAdjustment::Levels);
    wanted.inBlack = 30;
    operations.PreviewAdjustment(wanted);
    QVERIFY(history.isDelayedOpen());
    history.undo();
    QCOMPARE(document->GetAdjustment(1).inBlack, 0);
    wanted.inBlack = 50;
    operations.PreviewAdjustment(wanted);
    operations.FinishAdjustment();
    QCOMPARE(history.count(), 1);
    QCOMPARE(document->GetAdjustment(1).inBlack, 50);
    operations.FinishAdjustment();
    QCOMPARE(history.count(), 1);
    operations.SetView(nullptr);
}

void TestAdjustmentWidget::nothingWorksWhileTheDocumentIsLocked()
{
    const OwnedDocument document = MakeDocument({20, 10});
    document->AddAdjustmentLayer("levels", Of(LXAdjustment::Levels));
    LexoUndoStack history;
    ZKDocumentView view(document.get(), &history);
    view.GetLayerSelection()->select(document->GetModel()->index(0), QItemSelectionModel::ClearAndSelect);
    LayerOperations operations;
    operations.SetView(&view);
    document->Lock();
    LXAdjustment wanted = Of(LXAdjustment::Levels);
    wanted.inBlack = 30;
    operations.PreviewAdjustment(wanted);
    operations.AddAdjustment(wanted);
    QCOMPARE(document->GetAdjustment(1).inBlack, 0);
    QCOMPARE(document->GetModel()->rowCount(), 2);
    document->Unlock();
    operations.AddAdjustment(Of(LXAdjustment::Invert));
    QCOMPARE(document->GetModel()->GetName(0), QString("Invert"));
    QCOMPARE(history.text(0), QString("New adjustment layer"));
    operations.SetView(nullptr);
}

void TestAdjustmentWidget::theRowShowsWhatTheLayerIs()
{
    const OwnedDocument document = MakeDocument({20, 10});
    document->AddAdjustmentLayer("a", Of(LXAdjustment::Invert));
    document->AddTextLayer("a", QPointF());
    document->AddLayer("a", LXImage32(20, 10), QPoint());
    LexoUndoStack history;
    ZKDocumentView view(document.get(), &history);
    LayersWidget panel;
    panel.resize(260, 400);
    panel.SetView(&view);
    view.GetLayerSelection()->clear();
    panel.show();
    auto* list = panel.findChild<QListView*>("m_pList");
    const QImage shown = list->viewport()->grab().toImage();
    const auto row = [&](int number) {
        return shown.copy(list->visualRect(document->GetModel()->index(number)));
    };
    // All are empty and have one name: only what they are tells them apart.
    QVERIFY(row(0) != row(1));
    QVERIFY(row(1) != row(2));
    QVERIFY(row(0) != row(2));
    panel.SetView(nullptr);
}

ZK_REGISTER_TEST(tst_adjustmentwidget, TestAdjustmentWidget)
#include "tst_adjustmentwidget.moc"
