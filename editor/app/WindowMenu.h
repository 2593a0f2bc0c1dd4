#pragma once

#include <QObject>

class MainWindow;

/// The menu "Window": the panels, the full screen, and the arrangement of the window. Main thread only.
class WindowMenu : public QObject
{
    Q_OBJECT

public:
    /// @param window  becomes the owner; its panels are all there
    explicit WindowMenu(MainWindow* window);
};
