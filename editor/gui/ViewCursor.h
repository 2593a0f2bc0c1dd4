#pragma once

#include <QObject>

class ZKDocumentView;

/// Lets a view show the cursor of the item under the pointer, and its own everywhere else and while it pans.
/// Owned by its view.
///
/// After an item Qt gives the viewport the cursor that the view had before it, as one of the viewport's own:
/// what a tool sets on the view from then on would never be seen.
class ViewCursor : public QObject
{
    Q_OBJECT

public:
    explicit ViewCursor(ZKDocumentView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void GiveBack() const;
    bool IsOnItemWithCursor() const;

    ZKDocumentView* m_pView;
};
