#pragma once

#include <QPointer>

class LToolBoxWidget;
class LXDocumentInterface;
class ZKDocumentView;

/// What a tool's open dialog takes from the editor: the order of layers and paths, styles, the tool box, and
/// the document lock. It goes back to the view and the document that it was taken from, whichever is the
/// current one by then, and at the latest with this object. Main thread only.
class DialogBlock
{
public:
    DialogBlock() = default;
    ~DialogBlock();

    Q_DISABLE_COPY(DialogBlock)

    /// Refuses changes of the view's layer and path order and of styles, and presses on the tool box.
    /// @param toolBox  null when the tool has none.
    void BlockView(ZKDocumentView* view, LToolBoxWidget* toolBox);

    /// Takes the document lock of the blocked view. A lock that somebody else holds stays theirs.
    void LockDocument();

    /// Gives everything but the tool box back; harmless when nothing is held.
    void ReleaseView();

    void ReleaseToolBox();

private:
    QPointer<ZKDocumentView> m_pView;
    QPointer<LXDocumentInterface> m_pLockedDocument;
    QPointer<LToolBoxWidget> m_pToolBox;
};
