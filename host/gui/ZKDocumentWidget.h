#pragma once

#include "ZKHostExport.h"

#include <QWidget>

class LXDocumentInterface;
class LexoUndoStack;
class ZKDocumentView;

/// What a document's window holds: the view. Main thread only.
class ZK_HOST_EXPORT ZKDocumentWidget : public QWidget
{
    Q_OBJECT

public:
    /// As ZKDocumentView's constructor.
    ZKDocumentWidget(LXDocumentInterface* document, LexoUndoStack* history, QWidget* parent = nullptr);
    ~ZKDocumentWidget() override;

    /// Never null.
    ZKDocumentView* GetView() const { return m_pView; }

private:
    ZKDocumentView* m_pView;
};
