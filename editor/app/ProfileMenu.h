#pragma once

#include <QObject>
#include <QPointer>

class LXDocumentInterface;
class LexoCommand;
class MainWindow;
class QAction;
class ZKCMSProfile;
class ZKDocumentView;
struct ZKCMSRendering;

/// The entries of the menu "Image" for the color profile of a picture. Main thread only.
class ProfileMenu : public QObject
{
    Q_OBJECT

public:
    explicit ProfileMenu(MainWindow* window);

private:
    void Follow(ZKDocumentView* view);
    void Assign();
    void Convert();
    void ConvertTo(const ZKCMSProfile& target, const ZKCMSRendering& rendering);
    LexoCommand* MakeConversion(const ZKCMSProfile& target, const ZKCMSRendering& rendering);
    void Push(LexoCommand* command);
    void UpdateActions();

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pAssign;
    QAction* m_pConvert;
};
