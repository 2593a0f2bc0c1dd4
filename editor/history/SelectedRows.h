#pragma once

#include <QList>
#include <QPointer>

class QItemSelectionModel;

/// The rows of layers that a view has selected, followed by commands that add or remove a layer. The view may
/// go before the command. Main thread.
class SelectedRows
{
public:
    explicit SelectedRows(QItemSelectionModel* selection = nullptr);

    /// Remembers the rows that are selected now.
    void Remember();
    /// Selects what was remembered.
    void Restore() const;
    /// Selects this row alone, or the last one when there are fewer.
    void SelectOnly(int row) const;

private:
    QPointer<QItemSelectionModel> m_pSelection;
    QList<int> m_Rows;
};
