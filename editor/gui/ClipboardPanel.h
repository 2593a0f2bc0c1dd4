#pragma once

#include "EditorExport.h"

#include <QList>
#include <QWidget>

#include <memory>

class LayersWidget;
class QToolButton;

namespace Ui {
class ClipboardPanel;
}

/// The panel "Clipboard": the list that a tool handed to the layers panel, with a button for each thing that
/// can be done with its current row. Main thread only.
class ZK_EDITOR_EXPORT ClipboardPanel : public QWidget
{
    Q_OBJECT

public:
    /// @param source  who knows the list; may be null for a panel that stays empty
    explicit ClipboardPanel(LayersWidget* source, QWidget* parent = nullptr);
    ~ClipboardPanel() override;

    QSize sizeHint() const override;

private:
    void Follow(const LayersWidget* source);
    void MakeButtons(const LayersWidget* source);
    void UpdatePage();

    std::unique_ptr<Ui::ClipboardPanel> m_pUi;
    QList<QToolButton*> m_Buttons;
};
