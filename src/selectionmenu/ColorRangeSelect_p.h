#pragma once

#include "LXDialogViewToolBase.h"
#include "selectionmenu/ColorRange.h"

#include <QAction>
#include <QColor>
#include <QFutureWatcher>
#include <QImage>
#include <QPointer>

class LXColorTransformBase;
class SelectColorRangeDlg;

/// A color that was picked, and how the screen shows it.
struct ConvertResult
{
    QColor color;
    QColor shown;
};

/// What would be selected, made small.
struct ColorRangeResult
{
    QImage preview;
};

/// "Color range": colors are clicked in the picture while a dialog stands, and when it is accepted every
/// pixel of the merged picture near one of them is selected. Two kinds of jobs run on workers, the colors for
/// the screen and the preview; of each kind one runs at a time, and one more may be wanted. Main thread only.
class ColorRangeSelectPrivate : public LXDialogViewToolBase
{
    Q_OBJECT

public:
    explicit ColorRangeSelectPrivate(QObject* parent);

    /// Waits for jobs that still run and drops their results.
    ~ColorRangeSelectPrivate() override;

    void Init(QObject* parent) override;
    MainMenuEntries GetMainMenuEntries() override;

signals:
    /// A color became the current one.
    void SelectColor(int index);

protected:
    QWidget* CreateDialog(ZKDocumentView* view) override;
    void DialogStarted() override;
    void DialogFinished() override;
    void DialogAccepted() override;
    void DialogRejected() override;

    void CreateToolBar() override {}

    void CreateToolBoxButton() override {}

    void CreateToolWidget() override {}

    QCursor GetCursor() override;

private slots:
    void onActivate();
    void DocumentLocked();
    void DocumentUnlocked();
    void DocumentViewLocked();
    void DocumentViewUnlocked();
    void OnDocumentViewChangedSlot(IDocumentView* oldView, IDocumentView* newView);
    void OnMousePressSlot(QPointF scenePos, Qt::MouseButton button);
    void OnMouseMoveSlot(QPointF scenePos, Qt::MouseButtons buttons);
    void OnProcessPointSlot(QPointF scenePos);
    void OnProcessColorSlot();
    void OnToleranceChanged(int tolerance);
    void OnConversionFinishedSlot();
    void OnSelectionFinishedSlot();
    void OnConversionRadyAt(int index);
    void OnSelectionRadyAt(int index);
    void OnSelectColor(int index);
    void OnRemoveCurrentColor();
    void OnClearColors();
    void OnKeyPress(int key);
    void OnChooseColor();

private:
    /// The bits of m_JobFlags.
    enum JobFlag
    {
        ConversionRuns = 1,
        PreviewRuns = 2,
        ConversionWanted = 4,
        PreviewWanted = 8,
    };

    void FollowViewState(IDocumentView* view);
    void UpdateAction();
    bool IsOnPicture(const QPointF& scenePos) const;
    void AddColor(const QColor& color);
    void AppendColor(const ConvertResult& result);
    void StartConversion(const QColor& color);
    void RequestPreview();
    bool StartPreview();
    ColorRange GetRange() const;
    void ApplySelection();
    void PushSelection(const ColorRange& range);

    QAction* m_pAction = nullptr;
    MainMenuEntries m_Entries;
    QPointer<SelectColorRangeDlg> m_pDlg;
    QList<QColor> m_Colors;
    int m_CurrentColor = -1;
    int m_JobFlags = 0;
    QColor m_WaitingColor;
    bool m_bOnPicture = true;
    QFutureWatcher<ConvertResult>* m_pConversion;
    QFutureWatcher<ColorRangeResult>* m_pPreview;
};
