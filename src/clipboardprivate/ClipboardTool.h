#pragma once

#include "IClipboardInterface.h"
#include "IDocumentState.h"
#include "IDocumentViewTool.h"
#include "IMainMenuActionList.h"
#include "clipboardprivate/ClipboardItem.h"
#include "clipboardprivate/ClipboardPixels.h"

#include "common/PaintCommands.h"

#include <QAbstractItemModel>
#include <QItemSelectionModel>
#include <QKeySequence>
#include <QMenu>
#include <QModelIndex>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSize>
#include <QStandardItemModel>
#include <QVariant>
#include <QVector>

#include <memory>

class IDocumentView;
class LXDocumentInterface;
class LXDocumentModel;
class LexoUndoStack;
class QAction;
class ZKDocumentView;

/// Copy, cut and paste with a list of everything that was copied, here or in other programs, since the
/// program began. The list is shown in a panel of the editor; its current row is what is pasted. Main thread
/// only.
class ClipboardTool : public QObject,
                      public IMainMenuActionList,
                      public IClipboardInterface,
                      public IDocumentState,
                      public IDocumentViewTool
{
    Q_OBJECT
    Q_INTERFACES(IMainMenuActionList IClipboardInterface IDocumentState IDocumentViewTool)

public:
    explicit ClipboardTool(QObject* parent = nullptr);

    /// Empties the system clipboard too.
    ~ClipboardTool() override;

    QList<QAction*> GetMenuActions() override;
    QList<QAction*> GetToolBarActions() override;
    MainMenuEntries GetMainMenuEntries() override;

    void SetClipboardModel(QAbstractItemModel* model, QItemSelectionModel* selection) override;
    QList<QAction*> GetClipboardActions() override;

    quint64 GetDocumentState() override;
    void DocumentStateChanged(const quint64& oldState, const quint64& newState) override;

    bool SetDocumentView(IDocumentView* view) override;

public slots:
    /// These three begin after a moment, so that a key that repeats makes one copy. A paste within that
    /// moment begins them first. They never reach into another document, nor into one that is locked by then.
    void StartCopy();
    void StartCopyMerged();
    void StartCut();

    void Copy();
    void Cut();
    void Paste();
    void PasteAsNew();
    void PasteAsNewLayer();
    void Delete();

    /// The system clipboard holds something else.
    void DataChanged();
    void CurrentRowChanged(const QModelIndex& current, const QModelIndex& previous);
    void OnCopyToSystemClipboard();
    void SelectionChanged();
    void PasteAsMenuAboutToShow();
    void CurrentLayerChanged(const QModelIndex& current, const QModelIndex& previous);
    void DocumentLocked();
    void DocumentUnlocked();
    void OnMaskSelectionChanged(bool selected);
    void OnLayerSelectionChanged(bool selected);

protected:
    void timerEvent(QTimerEvent* event) override;

    /// Only if none is running.
    virtual void StartTimer(int msec);
    /// Only if nothing waits for one already.
    virtual void RestartTimer(int msec);
    virtual void StopTimer();

private:
    /// What an operation works on.
    struct Target
    {
        unsigned int layerId = 0;
        PaintTarget pixels = PaintTarget::Layer;
    };

    struct Actions
    {
        QAction* copy = nullptr;
        QAction* copyMerged = nullptr;
        QAction* cut = nullptr;
        QAction* paste = nullptr;
        QAction* newImage = nullptr;
        QAction* newLayer = nullptr;
        QAction* pasteAsNewImage = nullptr;
        QAction* remove = nullptr;
        QAction* toSystem = nullptr;
    };

    using Slot = void (ClipboardTool::*)();

    void MakeActions();
    void PlaceActions();
    QAction* AddAction(const QString& text, const QString& hint, Slot slot, const QString& icon = QString());
    void SetKeys(QAction* action, const QKeySequence& key, const QKeySequence& secondKey = QKeySequence());

    void ConnectView(ZKDocumentView* view);
    void DisconnectView();
    /// What waits for its moment begins now.
    void FinishStart();
    void ForgetStart();
    /// Another view comes: a copy is made yet, a cut isn't, for it would change what is no longer seen.
    void EndStartInView(const ZKDocumentView* next);
    LexoUndoStack* GetHistory() const;
    /// Whoever carries something about puts it down.
    void LandFloatingPieces();
    int CurrentLayerNumber() const;
    bool IsMaskTarget(int layer) const;
    bool IsDocumentLocked() const;
    bool HasCurrentItem() const;
    /// Rows, or what becomes rows when it is pasted.
    bool HasItems() const;
    void UpdateActions(bool haveItems);
    void UpdateAllActions();

    /// What is painted on, with its place; for id 0 the merged picture.
    ClipboardPixels::Placed ReadPixels(const Target& target) const;
    ClipboardPixels::Placed ReadSelection() const;

    void CopySelection();
    void CutSelection(const Target& target);
    void AddRow(const LXImage32& image, const QVariant& origin, const QString& what);
    void RefreshRow(int row, const LXImage32& image, const QVariant& origin);
    QList<QStandardItem*> MakeRow(const ClipboardItem& item, const QVariant& origin,
                                  const QString& what) const;
    void MakeCurrent(int row);
    int FindItem(const ClipboardItem& item) const;
    void PutOnSystemClipboard(const LXImage32& image);
    /// The current row goes out smaller than it is: should it come back, it is that row.
    void RememberOffered(const QImage& picture);
    bool IsOffered(const LXImage32& picture) const;
    /// Files that were copied become rows.
    void TakeFiles();
    void TakePictures();
    void LetFilesWait();

    /// Tells the person why not.
    bool MayPaintOn(const Target& target);
    bool IsLocked(unsigned int layerId);
    void PasteCurrent(const Target& target);
    void PasteOnLayer(unsigned int layerId);
    /// Leaves no empty layer when it throws.
    void PasteOnNewLayer(unsigned int layerId);
    void PasteOnMask(unsigned int layerId);
    /// Where a picture goes, and what bounds it.
    QRect PasteTarget(const QSize& picture) const;
    void Push(const PaintChange& change, PaintTarget target, const QString& text);
    void MarkPasted(const QModelIndex& row);
    QModelIndex CurrentIndex() const;
    void MakeDocument(const ClipboardItem& item);
    void MakeLayer(int layer);

    bool m_bCutPending = false;
    bool m_bMergedPending = false;
    bool m_bOwnCopy = false;
    bool m_bRemoving = false;
    bool m_bPastingOnMask = false; ///< its dialog runs an event loop
    bool m_bFilesWait = false;     ///< the system clipboard holds files of pictures, and no row is chosen
    QVector<ClipboardItem> m_Items;
    QStandardItemModel* m_pModel;
    QItemSelectionModel* m_pSelectionModel;
    int m_CurrentRow = -1;
    QPersistentModelIndex m_OfferedRow;
    QSize m_OfferedSize;
    unsigned int m_OfferedCrc = 0;
    Actions m_Actions;
    std::unique_ptr<QMenu> m_pPasteAsMenu;
    MainMenuEntries m_Entries;

    QPointer<LXDocumentInterface> m_pDocument;
    QPointer<ZKDocumentView> m_pView;
    QPointer<QItemSelectionModel> m_pLayerSelection;

    // Of the host, for who asks to hand them over this way.
    QPointer<QAbstractItemModel> m_pHostModel;
    QPointer<QItemSelectionModel> m_pHostSelection;

    int m_TimerId = -1;
    bool m_bTimerPending = false;
};
