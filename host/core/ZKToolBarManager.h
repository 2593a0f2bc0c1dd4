#pragma once

#include "ZKHostExport.h"

#include <QString>

#include <memory>

class QWidget;
class ZKToolBarManagerPrivate;

/// The option bars of the tools, of which the window shows one. Main thread only.
class ZK_HOST_EXPORT ZKToolBarManager
{
public:
    static ZKToolBarManager* GetInstance();
    ~ZKToolBarManager();
    ZKToolBarManager(const ZKToolBarManager&) = delete;
    ZKToolBarManager& operator=(const ZKToolBarManager&) = delete;

    /// Takes a bar in, hidden. The window owns it as soon as there is one; a deleted bar leaves by itself.
    /// Null and a bar that is in already are ignored, but for the title.
    /// @param title  the bar's name for assistive technology. A bar with a window icon of its own shows it
    /// as a picture before its controls.
    static void Add(QWidget* bar, const QString& title);

    /// Shows this bar in place of the last one; null shows none. A bar that was never added is taken in
    /// under its window title.
    static void Activate(QWidget* bar);

private:
    ZKToolBarManager();

    friend class ZKToolBarManagerPrivate;
    std::unique_ptr<ZKToolBarManagerPrivate> m_pPrivate;
};
