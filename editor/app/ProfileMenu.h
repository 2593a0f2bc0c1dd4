#pragma once

#include <QObject>
#include <QPointer>

class LXDocumentInterface;
class MainWindow;
class QAction;
class TargetDocument;
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
    void ConvertTo(const TargetDocument& target, const ZKCMSProfile& profile,
                   const ZKCMSRendering& rendering);
    void UpdateActions();

    MainWindow* m_pWindow;
    QPointer<LXDocumentInterface> m_pDocument;
    QAction* m_pAssign;
    QAction* m_pConvert;
};
