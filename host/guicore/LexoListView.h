#pragma once

#include "ZKHostExport.h"

#include <QListView>

/// A list of previews that pops up beside a control: pictures in columns with their names below. Main thread
/// only.
///
/// A click, Enter or Space on an item picks it and closes the list; a press outside and Escape only close it.
/// The arrow keys go through the items. The model's decoration is the preview, in up to `iconSize()`.
class ZK_HOST_EXPORT LexoListView : public QListView
{
    Q_OBJECT

public:
    explicit LexoListView(QWidget* parent = nullptr);
    ~LexoListView() override;

    /// Opens on the side of the control where there is room, with the current item in sight and the focus.
    void PopUp(const QWidget* anchor);

    /// As many columns and rows as the items take, four at most each; the others are scrolled to.
    QSize sizeHint() const override;

signals:
    /// The item is the current one, and the list has closed.
    void Picked(const QModelIndex& index);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Pick(const QModelIndex& index);
};
