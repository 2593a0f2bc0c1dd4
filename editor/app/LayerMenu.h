#pragma once

#include "gui/LayerOperations.h"
#include "image/LXAdjustment.h"

#include <QObject>

#include <memory>

class MainWindow;
class QMenu;

/// The sub menu "New Adjustment Layer" of the menu "Layer". Main thread only.
class LayerMenu : public QObject
{
    Q_OBJECT

public:
    explicit LayerMenu(MainWindow* window);
    ~LayerMenu() override;

private:
    void Add(LXAdjustment::Kind kind, const QString& text, const QString& hint, const char* name);
    void UpdateActions();

    MainWindow* m_pWindow;
    LayerOperations m_Operations;
    std::unique_ptr<QMenu> m_pMenu;
};
