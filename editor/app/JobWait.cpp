#include "app/JobWait.h"

#include "document/LXDocumentInterface.h"

#include <QEventLoop>
#include <QTimer>

bool WaitUntilUnlocked(LXDocumentInterface* document)
{
    constexpr int limit = 60000; // ms
    if (!document->GetLockState()) return true;

    QEventLoop loop;
    QObject::connect(document, &LXDocumentInterface::Unlocked, &loop, &QEventLoop::quit);
    QObject::connect(document, &QObject::destroyed, &loop, [&loop] { loop.exit(1); });
    QTimer::singleShot(limit, &loop, [&loop] { loop.exit(1); });
    return loop.exec() == 0;
}
