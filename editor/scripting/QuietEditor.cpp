#include "scripting/QuietEditor.h"

#include "document/LXDocumentInterface.h"
#include "gui/LXDocumentManager.h"
#include "gui/LayersWidget.h"
#include "scripting/ScriptContext.h"

#include <QAbstractEventDispatcher>
#include <QAbstractItemModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QThreadPool>
#include <QTimer>
#include <QWidget>

#include <climits>

namespace {
constexpr int RoundsToBeSure = 2; ///< the end of one thing may start another
constexpr int PollInterval = 5;   ///< ms
constexpr int SoonDue = 1000;     ///< ms; a timer for later than this is no work under way

/// Comes back when everything that was queued before it has been delivered.
class QueueMark : public QObject
{
public:
    QueueMark()
    {
        // Behind the repaints, which are posted with low priority.
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), INT_MIN);
    }

    bool HasPassed() const { return m_bPassed; }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::User) m_bPassed = true;
        return QObject::event(event);
    }

private:
    bool m_bPassed = false;
};

void DeliverQueuedEvents()
{
    const QueueMark mark;
    while (!mark.HasPassed())
        QCoreApplication::processEvents();
    // The script itself runs inside an event handler, so plain event handling leaves these.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool IsSoonDue(const QTimer* timer)
{
    return timer->isActive() && timer->isSingleShot() && timer->remainingTime() <= SoonDue;
}

/// `QTimer::singleShot()` leaves a child of the dispatcher that isn't a QTimer.
bool HasSingleShotSoon()
{
    QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    for (QObject* child : dispatcher->children()) {
        if (!child->inherits("QSingleShotTimer")) continue;
        for (const QAbstractEventDispatcher::TimerInfo& timer : dispatcher->registeredTimers(child)) {
            if (dispatcher->remainingTime(timer.timerId) <= SoonDue) return true;
        }
    }
    return false;
}

/// A copy begins a moment after its key, by a timer of who keeps the list of copies.
bool IsCopySoon()
{
    const QAbstractItemModel* list = LayersWidget::GetInstance()->GetClipboardModel();
    QObject* owner = list ? list->QObject::parent() : nullptr;
    return owner && !QAbstractEventDispatcher::instance()->registeredTimers(owner).isEmpty();
}

bool HasTimerSoon()
{
    if (HasSingleShotSoon() || IsCopySoon()) return true;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (const QTimer* timer : window->findChildren<QTimer*>()) {
            if (IsSoonDue(timer)) return true;
        }
    }
    return false;
}
} // namespace

QStringList QuietEditor::Busy()
{
    QStringList busy;
    const int jobs = QThreadPool::globalInstance()->activeThreadCount();
    if (jobs > 0) busy << QCoreApplication::translate("QuietEditor", "%n job(s) run", nullptr, jobs);
    // Who holds a button down keeps the document for as long, and nothing is to be waited for.
    const bool isInGesture = QGuiApplication::mouseButtons() != Qt::NoButton;
    for (const LXDocumentInterface* document : LXDocumentManager::Instance()->GetDocuments()) {
        if (document->GetLockState() && !isInGesture)
            busy << QCoreApplication::translate("QuietEditor", "a document is locked");
    }
    if (HasTimerSoon()) busy << QCoreApplication::translate("QuietEditor", "a timer is about to fire");
    return busy;
}

QString QuietEditor::WaitUntilQuiet(const ScriptContext& context, int limit)
{
    QElapsedTimer clock;
    clock.start();
    // Wakes the loop also when nothing happens.
    QTimer alarm;
    alarm.start(PollInterval);
    int quietRounds = 0;
    while (!context.IsEnding()) {
        DeliverQueuedEvents();
        const QStringList busy = Busy();
        quietRounds = busy.isEmpty() ? quietRounds + 1 : 0;
        if (quietRounds == RoundsToBeSure) return QString();
        if (!busy.isEmpty() && clock.elapsed() >= limit) return busy.join(QStringLiteral(", "));
        if (!busy.isEmpty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return QString();
}
