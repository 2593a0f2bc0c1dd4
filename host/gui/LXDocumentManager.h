#pragma once

#include "ZKHostExport.h"

#include <QList>
#include <QObject>

#include <memory>

class LXDocumentInterface;
class LXDocumentManagerPrivate;
class LXMdiArea;

/// The open documents. One instance, made at first use. Main thread only.
class ZK_HOST_EXPORT LXDocumentManager : public QObject
{
    Q_OBJECT

public:
    static LXDocumentManager* Instance();
    ~LXDocumentManager() override;

    /// Never null: made at first use; whoever gives it a parent owns it.
    static LXMdiArea* GetDocumentArea();

    /// Makes a history and a window for the document and brings the window to the front. From then on the
    /// manager owns the document and releases it after its window has closed.
    /// False for null, a document that is open already and one without a canvas: nothing is done, the
    /// caller keeps it.
    bool AddDocument(LXDocumentInterface* document);

    /// In the order of opening.
    QList<LXDocumentInterface*> GetDocuments() const;

private:
    LXDocumentManager();

    std::unique_ptr<LXDocumentManagerPrivate> m_pPrivate;
};
