#pragma once

#include "clipboardprivate/ClipboardTool.h"

#include "gui/LayersWidget.h"
#include "guicore/LXMessageBox.h"
#include "support/ViewFixture.h"

#include <QImage>
#include <QStringList>

#include <functional>
#include <memory>

/// The clipboard on a small document in a view, without a plug-in around it. The document is 40 by 30; its
/// one layer of that size has another color at each pixel and is selected.
class ClipboardFixture
{
protected:
    void MakeTool();
    void DropTool();

    LXDocumentInterface* Document() const { return m_pFixture->Document(); }

    LXDocumentModel* Layers() const { return Document()->GetModel(); }

    /// The pixel (x, y) that the layer had at first.
    static LXRGBA32i Begun(int x, int y);

    /// Selects a rectangle with the same coverage everywhere.
    void Select(const QRect& rect, int coverage = 255);

    /// Puts a mask of this value on the layer, as large as the canvas; painting goes to it.
    void GiveMask(int value, bool reveals);
    int MaskValue(int x, int y) const;

    QAction* Action(const QString& text) const;
    /// The texts of all actions that are on.
    QStringList OpenActions() const;

    QStandardItemModel* List() const;
    int CurrentRow() const;
    QString Cell(int row, int column) const;
    LXImage32 ItemImage(int row) const;

    QStringList HistoryTexts() const;

    /// What the boxes say that show while the work runs, each "title: text", closed by their frame.
    QStringList BoxesDuring(const std::function<void()>& work);

    /// The picture as another program would put it on the clipboard.
    static void PutForeign(const QImage& image);
    static QImage SystemImage();

    std::unique_ptr<ViewFixture> m_pFixture;
    std::unique_ptr<LayersWidget> m_pPanel;
    std::unique_ptr<ClipboardTool> m_pTool;
};
