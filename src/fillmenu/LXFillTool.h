#pragma once

#include "LXDialogViewToolBase.h"

#include "common/PaintCommands.h"
#include "common/PixelFunctors.h"

#include <QAction>
#include <QItemSelection>
#include <QKeySequence>
#include <QMenu>
#include <QPointer>

#include <memory>

class LexoCommand;
class LexoUndoStack;
class LXDocumentInterface;
class QBrush;
class QItemSelectionModel;
struct FillSolidOperation;

/// The fill commands of the menu "Edit": a sub menu of colors, and "Clean up alpha". A command changes the
/// one selected layer, or its mask, as far as something is selected; it works under a progress dialog and is
/// one undoable step. Main thread only.
class LXFillTool : public LXDialogViewToolBase
{
    Q_OBJECT

public:
    using CleanupAlpha = ::CleanupAlpha;
    using FillColorWithoutTransparency = ::FillColorWithoutTransparency;

    explicit LXFillTool(QObject* parent);
    ~LXFillTool() override;

    void Init(QObject* parent) override;
    MainMenuEntries GetMainMenuEntries() override;

protected:
    QWidget* CreateDialog(ZKDocumentView*) override { return nullptr; }

    void DialogStarted() override {}

    void DialogFinished() override {}

    void DialogAccepted() override {}

    void DialogRejected() override {}

    void CreateToolBar() override {}

    void CreateToolBoxButton() override {}

    void CreateToolWidget() override {}

    QCursor GetCursor() override { return {}; }

private slots:
    void OnCurrentDocumentChanged(IDocumentView* oldView, IDocumentView* newView);
    void OnCurrentLayerSelChanged(QItemSelection selected, QItemSelection deselected);
    void OnLayerSelectionChanged(bool selected);
    void OnMaskSelectionChanged(bool selected);
    void OnLayerLocksChanged(uint id, uint flags);
    void OnDocumentLocked(bool locked);
    void OnCleanupAlpha();
    void OnForeground();
    void OnBackground();
    void OnTransparent();
    void OnCustom();
    void OnGrey25();
    void OnGrey50();
    void OnGrey75();
    void OnWhite();
    void OnRed();
    void OnGreen();
    void OnBlue();
    void OnCyan();
    void OnMagenta();
    void OnYellow();
    void OnBlack();
    void OnActivatedAmbiguously(QKeySequence key, int id);

private:
    using Slot = void (LXFillTool::*)();

    /// What a command works on: the layer, or its mask, of one picture. While the command asks something or
    /// works, that picture may be closed, and another one may become the active one.
    struct Target
    {
        QPointer<LXDocumentInterface> document;
        QPointer<LexoUndoStack> history;
        unsigned int layerId = 0;
        PaintTarget pixels = PaintTarget::Layer;
    };

    void AddFillMenu();
    QAction* AddFillAction(const QString& text, Slot slot, const QKeySequence& key = {});
    void AddCleanupEntry();

    /// What a command would fill now; without a document when the commands are closed.
    Target FindTarget() const;
    static bool IsOpen(const LXDocumentInterface* document, unsigned int layerId, PaintTarget pixels);
    void UpdateActions();
    void FollowLayerSelection(QItemSelectionModel* selection);

    /// Before pixels are read: what floats belongs to them.
    static void LandPieces(const Target& target);
    static bool KeepsAlpha(const Target& target);
    bool IsMaskTarget() const;
    bool MayCleanUp(const Target& target);

    void FillSolid(const QColor& color, const QString& text);
    void RunSolid(FillSolidOperation operation, const QString& text);
    void FillCustom(const Target& target, const QBrush& brush, unsigned int mode, double opacity);
    template <class Operation>
    static void RunFill(const Target& target, Operation& operation, const QString& label,
                        const QString& failure, const QString& text);
    static void Push(const Target& target, std::unique_ptr<LexoCommand> command, const QString& text);
    static void CleanUp(const Target& target);

    std::unique_ptr<QMenu> m_pFillMenu;
    QAction* m_pSeparator = nullptr;
    QAction* m_pCleanup = nullptr;
    MainMenuEntries m_Entries;
    QPointer<QItemSelectionModel> m_pLayerSelection;
};
