#pragma once

#include "history/SelectionModify.h"

#include <QObject>
#include <QPointer>

#include <memory>

class LXDocumentInterface;
class LexoUndoStack;
class MainWindow;
class QMenu;
class ZKDocumentView;

/// The sub menu "Modify" of the menu "Selection": selections made of the present one. Main thread only.
class ModifyMenu : public QObject
{
    Q_OBJECT

public:
    explicit ModifyMenu(MainWindow* window);
    ~ModifyMenu() override;

private:
    void Add(SelectionModify::Kind kind, const QString& text, const QString& hint, const char* name);
    void Follow(ZKDocumentView* view);
    void Modify(SelectionModify::Kind kind);
    void UpdateActions();

    MainWindow* m_pWindow;
    std::unique_ptr<QMenu> m_pMenu;
    QPointer<LXDocumentInterface> m_pDocument;
    QPointer<LexoUndoStack> m_pHistory;
};
