#pragma once

#include <QTimer>

#include <functional>

/// Brings something beside the picture up to date in a later turn of the event loop, once for all that
/// changed until then. A person waits for the picture, so that is painted first. Main thread only.
class LaterUpdate : public QObject
{
public:
    /// @param owner   a widget, or what belongs to one; this goes with it
    /// @param update  what is to be done; it may find that nothing is
    LaterUpdate(QObject* owner, std::function<void()> update);

    /// For what changed together with the picture: as soon as that is painted.
    void AskAfterPicture();

    /// For a document's lock, whether it was taken or given back: within a tenth of a second. Most clicks are
    /// over by then, and controls that go off and on again only flicker.
    void AskAboutLock();

private:
    QTimer m_Timer;
};
