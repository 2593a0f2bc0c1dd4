#include "guicore/GuardedStep.h"

#include "guicore/LXMessageBox.h"
#include "image/LXTileExceptions.h"

#include <QCoreApplication>
#include <QWidget>

#include <new>

namespace {
QString Words(const char* text)
{
    return QCoreApplication::translate("GuardedStep", text);
}

QString DiskIsFull()
{
    return Words(QT_TRANSLATE_NOOP("GuardedStep", "This could not be done: there is no room on the disk for "
                                                  "temporary files. Make some room, then try again."));
}
} // namespace

QString GuardedStep::Try(const std::function<void()>& step)
{
    try {
        step();
    } catch (const std::bad_alloc&) {
        return Words(QT_TRANSLATE_NOOP("GuardedStep", "This could not be done: there is not enough memory. "
                                                      "Close what is not needed, then try again."));
    } catch (const LXTMSwapError&) {
        return DiskIsFull();
    } catch (const LXTMSwapFileError&) {
        return DiskIsFull();
    }
    return QString();
}

void GuardedStep::Tell(QWidget* parent, const QString& failure)
{
    LXMessageBox::Warning(parent ? parent->window() : nullptr,
                          Words(QT_TRANSLATE_NOOP("GuardedStep", "Zenkari")), failure, LXMessageBox::Close,
                          LXMessageBox::Close);
}

bool GuardedStep::Run(QWidget* parent, const std::function<void()>& step)
{
    // The box runs an event loop, which must not stand inside a handler.
    const QString failure = Try(step);
    if (!failure.isEmpty()) Tell(parent, failure);
    return failure.isEmpty();
}
