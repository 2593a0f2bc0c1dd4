#pragma once

#include "EditorExport.h"

#include <QWidget>

class ColorWell;
class QToolButton;

/// The foreground and the background color of the program, for the foot of the tool box. A click on one asks
/// for another color; X swaps the two, D sets black and white. Main thread only.
class ZK_EDITOR_EXPORT ColorWells : public QWidget
{
    Q_OBJECT

public:
    explicit ColorWells(QWidget* parent = nullptr);
    ~ColorWells() override;

    static void Swap();
    static void Reset();

private:
    QToolButton* MakeButton(const QString& icon, const QString& text, const QKeySequence& key, void (*act)());

    ColorWell* m_pForeground;
    ColorWell* m_pBackground;
};
