#pragma once

#include <QObject>

class MainWindow;

/// The menu "Help". Main thread only.
class HelpMenu : public QObject
{
    Q_OBJECT

public:
    /// @param window  becomes the owner
    explicit HelpMenu(MainWindow* window);
};
