#pragma once

#include "app/LayerPictures.h"

#include <QObject>
#include <QPointer>

#include <optional>

class LXDocumentInterface;
class MainWindow;
class QAction;
class ZKDocumentView;

/// What the editor itself does with copied pictures: putting them on new layers of their own size, and
/// opening them. The chosen row of the clipboard's list counts; while the list is empty, what other programs
/// have copied. Main thread only.
class ClipboardMenu : public QObject
{
    Q_OBJECT

public:
    /// @param window  outlives the menu
    explicit ClipboardMenu(MainWindow* window);

private:
    /// A copied picture, and where it was in its document, if that is known.
    struct Copied
    {
        LXImage32 image;
        std::optional<QPoint> origin;
    };

    void Follow(ZKDocumentView* view);
    void FollowList();
    void UpdateActions();
    bool HasPicture() const;
    /// Nothing when there is no picture that can be read.
    std::optional<Copied> Take() const;
    void PasteInPlace();
    void PasteIntoView();
    void OpenAsNew();
    template <class Work>
    void WithPicture(Work work);

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pInPlace = nullptr;
    QAction* m_pIntoView = nullptr;
    QAction* m_pNew = nullptr;
};
